#pragma once

#include "platform/database.h"
#include "platform/operation.h"

#include <QString>
#include <QStringList>

namespace zorbo {

// What the player tab holds. The typed numbers stay text until the save
// checks them.
struct PlayerForm {
    qint64 nummer = 0;
    QString name;
    QString vorname;
    int staerkeIndex = 0; // cbospielerstärke: half stars, 0 to 12
    int maxIndex = 0;     // cbospielermstärke
    qint64 staerke = -1;  // what the save wrote for the two; -1: 1000 units an entry
    qint64 maxstaerke = -1;
    QString land;
    QString groesse;      // txtspielergroesse
    int art = 0;          // cbospielerpos
    QString einsatz;      // txtspielereinsatz
    QString rnr;          // txtspielerrnr
    qint64 gesicht = 0;
    qint64 hautfarbe = 0; // as the row holds them; the save brings them in line with the face
    qint64 haarfarbe = 0;
    QString erlernt;
    QString gesperrt;
};

// The hair digit of a face code (bits 13 to 19).
int haarziffer(qint64 gesicht);

// List index of a star text of the grid, as "2,5 Sterne": the number before
// the first blank, comma or period as decimal sign, doubled, ties to even.
int sterneindex(const QString &text);

// The grid row after a save: the form's values over the old row, strengths
// as star texts, the position by its name; columns 0 and 10 to 12 stay.
QStringList updatedgridrow(QStringList row, const PlayerForm &form, QChar decimalSign);

// The star entry a stored strength shows as in the player tab.
int sterneindexof(qint64 staerke);

// Stores the player. A strength whose star entry the user left as it showed
// keeps its stored value; a chosen entry stores 1000 units a half star. Skin
// and hair colour follow a changed face through e_gesichtsfarbe; a face the
// table doesn't know keeps the form's colours.
// On success the form holds the strengths and colours that were written. Refuses, writing
// nothing, when a number field holds no whole number.
Result spielersave(Database &db, PlayerForm &form);

} // namespace zorbo
