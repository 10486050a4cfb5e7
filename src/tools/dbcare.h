#pragma once

#include "core/world.h"
#include "platform/database.h"
#include "platform/operation.h"

namespace zorbo {

// Empties the world: clubs, national teams, players and squads. The free
// players (a4spieler) and the reference tables stay, and the transfer
// market is generated anew. One transaction.
// The wipe's step of the history, with a restore point before it.
Step wipestep();

Result del_db(Database &db, const Progress &progress = {});

// Rewrites the world's database file in compact form, after keeping a
// restore point: the copy is written
// beside it, checked (integrity, the same number of rows in every table)
// and only then renamed over it; the world opens it again. Any failure
// before that leaves the old file and the open database as they were.
Result comp_db(World &world, const Progress &progress = {});

} // namespace zorbo
