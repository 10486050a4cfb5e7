#pragma once

#include "anstoss/aetfile.h"
#include "anstoss/anstossresult.h"

namespace zorbo {

// Adds the file's player k (counted from 0) to the free players (a4spieler):
// name, whole first name, country and club name as the file has them,
// position, strength, games left and squad number as whole numbers, a face
// from gesichtbauen. Throws Fault for a value the row can't take.
void savea4spieler(Database &db, const AetFile &file, int k);

// Removes the row just added when an older one holds the same player;
// a4deleteid limited to that row, which is all it can find after a run of
// saves that began with a table without duplicates.
void a4deletenew(Database &db);

// The players of the file (all when indexes is empty) into the free
// players, a4deleteid after each; the message is "N Spieler in Freie
// Spieler importiert!". Reports one step per player. Runs inside the
// caller's transaction; throws Fault, DbError or Cancelled.
// cleanfirst false spares the first a4deleteid when the run already did it.
AnstossResult importfreeplayers(Database &db, const AetFile &file, const QList<int> &indexes = {},
                                const Progress &progress = {}, bool cleanfirst = true);

// The same as one operation of its own, in one transaction: all or none.
AnstossResult runfreeplayers(Database &db, const QString &path, const QList<int> &indexes = {},
                             const Progress &progress = {});

} // namespace zorbo
