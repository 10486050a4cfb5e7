#pragma once

#include "core/settings.h"
#include "platform/database.h"

namespace zorbo::test {

// A small world the problem check finds nothing in: the country
// Deutschland (1), the club FC Test (10) with 20 players 100 to 119 (100 in
// goal, squad numbers 1 to 20), the market row without players; and, in
// folder (a path without trailing separator), the face pictures and the
// crest 5 its rows name. Returns settings pointing at those folders.
Settings makecleanworld(Database &db, const QString &folder);

// Adds one problem of each kind to the clean world (see the test for
// which row carries which).
void addeveryproblem(Database &db);

} // namespace zorbo::test
