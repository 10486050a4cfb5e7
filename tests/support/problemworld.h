#pragma once

#include "core/settings.h"
#include "platform/database.h"

namespace zorbo::test {

// Settings whose folders lie below folder (a path without trailing separator).
Settings testsettings(const QString &folder);

// A small world the problem check finds nothing in: the country
// Deutschland (1), the club FC Test (10) with 20 players 100 to 119 (100 in
// goal, squad numbers 1 to 20), the market row without players; and, in the
// settings' folders, the face pictures and the crest 5 its rows name. The
// team and player tables must be empty.
void makecleanworld(Database &db, const Settings &settings);
// The same with testsettings(folder), which it returns.
Settings makecleanworld(Database &db, const QString &folder);

// Adds one problem of each kind to the clean world (see the test for
// which row carries which).
void addeveryproblem(Database &db);

} // namespace zorbo::test
