#pragma once

#include "core/strength.h"
#include "platform/database.h"

#include <QHash>
#include <QString>

namespace zorbo {

// A row of a4spieler, read by position.
struct FreePlayer {
    qint64 id = -1;
    QString name;
    QString vorname;
    QString land;
    QString verein; // the exporter club's name
    int position = 0;
    qint64 staerke = 0;
    qint64 restspiele = 0;
    qint64 rueckennummer = 0;
    qint64 gesicht = 0;
    qint64 hautfarbe = 0;
    qint64 haarfarbe = 0;

    // From a row of a4spieler or a4spielerzufall, columns in the table's order.
    static FreePlayer read(const Statement &row);
};

// The first letter of a first name and a dot, as the game keeps it.
QString initial(const QString &vorname);

// Writes a free player over the row of player nummer in spieler: the
// columns a free player has, MAX_STÄRKE by the market's rule, the country
// through landneu (countries looks up what was already settled this run;
// a free player without one leaves the row without one too),
// no talents. With the squad number only when withNumber; height and
// favourite position stay. Throws DbError.
void writefreeplayer(Database &db, qint64 nummer, const FreePlayer &player, Staerkegewinn &gain,
                     QHash<QString, QString> &countries, bool withNumber);

} // namespace zorbo
