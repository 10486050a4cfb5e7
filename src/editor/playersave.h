#pragma once

#include "platform/database.h"
#include "platform/result.h"

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

// Stores the player. Skin and hair colour follow the face through
// e_gesichtsfarbe; a face the table doesn't know keeps the form's colours.
// On success the form holds the colours that were written. Refuses, writing
// nothing, when a number field holds no whole number.
Result spielersave(Database &db, PlayerForm &form);

} // namespace zorbo
