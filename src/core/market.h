#pragma once

#include "platform/database.h"
#include "platform/operation.h"

namespace zorbo {

inline constexpr int marketPlayerCount = 1700;
inline constexpr const char *marketName = "TRANSFERMARKT";

// Makes sure the transfer market row (team 0) exists. When it is missing it
// is created with its 1700 placeholder players, in one transaction; returns
// true then. The row holds Null in every column but NUMMER, NAME and
// GRAFIK_NR, so it goes out to the game's file in the short form. Throws
// DbError, or Cancelled when progress asks to stop, leaving the database as
// it was.
bool ensuretransfermarket(Database &db, const Progress &progress = {});

} // namespace zorbo
