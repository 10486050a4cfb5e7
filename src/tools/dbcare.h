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
// restore point: the copy is written beside it, checked (integrity, the same
// number of rows in every table) and only then renamed over it; the world
// opens it again. dropHistory: the copy leaves out the history, so that it
// goes with the same rename. Any failure before the rename leaves the old
// file, the open database and the restore points as they were; progress is
// reported only before it.
Result comp_db(World &world, const Progress &progress = {}, bool dropHistory = false);

} // namespace zorbo
