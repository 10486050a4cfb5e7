#pragma once

#include "core/world.h"
#include "platform/database.h"
#include "platform/operation.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace zorbo {

// An entry of the market window's lists: a player of a club or a free player.
struct SwapEntry {
    qint64 key = -1; // nummer of a club's player, id of a free player
    QString text;    // "Vorname Name"
    int art = 0;     // position, 0 goalkeeper to 3 forward
    qint64 staerke = 0;
};

// The exporter clubs of the free players, sorted.
QStringList freeclubs(Database &db);
// The free players of an exporter club, by position, name, first name.
QList<SwapEntry> freeplayers(Database &db, const QString &verein);
// The squad of a team, by position, name, first name.
QList<SwapEntry> squadentries(Database &db, qint64 team);

// Position as the market's lists show it: "TOR", "ABW", "MIT", "STU".
QString positionshort(int art);

// Player left of club leftclub goes to club rightclub and player right of
// rightclub to leftclub; all other data stays with the players. A club of
// -1 means the player's one club (vereine, the market included); a player
// in several clubs must then be told which. Refused when a player is not
// where the caller says. One transaction.
// The swaps' steps of the history.
Step swapstep(qint64 left, qint64 right);
Step swapfreestep(qint64 freeid, qint64 nummer);

Result swapplayers(Database &db, qint64 left, qint64 right, qint64 leftclub = -1, qint64 rightclub = -1);

// Free player freeid comes onto the row of player nummer, who goes into the
// free players under freeid's exporter club; the squads keep their rows.
// With team >= 0 the player must stand in that team, with a non-empty
// verein the free player must belong to that exporter club. Then the
// free players' duplicates are cleared (a4deleteid). One transaction.
Result swapfree(Database &db, qint64 freeid, qint64 nummer, qint64 team = -1, const QString &verein = {});

} // namespace zorbo
