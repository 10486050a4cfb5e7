#pragma once

#include "exchange/exchangeresult.h"
#include "platform/database.h"

namespace zorbo {

// The import runs of the menu: a replacement, not a merge. Each is one
// transaction, so a file that fails halfway leaves the world as it was.

// Empties vereine, vereine_national and vereinspieler and reads a 1_tm.cfg;
// a file without team 0 gets the transfer market anew.
ExchangeResult importteamsrun(Database &db, const QString &path, const Progress &progress = {});

// Empties spieler and reads a 1_sp.cfg; squads stay as they are.
ExchangeResult importplayersrun(Database &db, const QString &path, const Progress &progress = {});

} // namespace zorbo
