#pragma once

#include "editor/playergrid.h"
#include "platform/database.h"
#include "platform/operation.h"

#include <QString>

namespace zorbo {

// What the player tab holds, over the player it was filled from. The typed
// numbers stay text until the save checks them.
struct PlayerForm {
    GridPlayer shown;
    QString name;
    QString vorname;
    int staerkeIndex = 0; // cbospielerstärke: half stars, 0 to 12
    int maxIndex = 0;     // cbospielermstärke
    QString land;
    QString groesse;      // txtspielergroesse
    int art = 0;          // cbospielerpos
    QString einsatz;      // txtspielereinsatz
    QString rnr;          // txtspielerrnr
    qint64 gesicht = 0;   // the face on show
    QString erlernt;
    QString gesperrt;

    bool operator==(const PlayerForm &) const = default;
};

// The hair digit of a face code (bits 13 to 19).
int haarziffer(qint64 gesicht);

// The star entry a stored strength shows as in the player tab: the half
// star nearest to the strength as the grid shows it, to one decimal.
int sterneindexof(qint64 staerke);

// The position entry a stored ART shows as; one outside the list, or Null,
// shows as the first.
int positionindexof(const std::optional<qint64> &art);

// The form the player tab shows for a player: a Null as an empty field, a
// strength and a position as their entries, the face code 0 for Null.
PlayerForm playerform(const GridPlayer &player);

// Stores the player. What the user left as it showed keeps its stored value:
// a strength between half stars, a position outside the list, a Null behind
// an empty field. A chosen star entry stores 1000 units a half star. Skin and
// hair colour follow a changed face through e_gesichtsfarbe; a face the table
// doesn't know keeps the shown player's colours.
// On success saved, when given, holds the player as written. Refuses,
// writing nothing, when a number field holds no whole number.
Result spielersave(Database &db, const PlayerForm &form, GridPlayer *saved = nullptr);

} // namespace zorbo
