#pragma once

#include "platform/database.h"
#include "platform/operation.h"

#include <QString>

namespace zorbo {

// Position (ART) of the i-th generated player of a squad.
int generatedposition(int i);

// Creates count placeholder players for a team, numbered by newplayernumbers
// (on from the highest), with their squad rows; all or nothing. Returns the
// first new player number. Reports one step per player; throws DbError, or
// Cancelled when progress asks to stop.
qint64 spieler20new(Database &db, qint64 team, const QString &country, int count, const Progress &progress = {});

} // namespace zorbo
