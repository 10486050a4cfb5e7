#pragma once

#include "core/world.h"
#include "exchange/exchangeresult.h"
#include "platform/database.h"

namespace zorbo {

// For every country of e_landkontinent with a league: its national row (by
// landneu) and as many generated clubs as the league has teams, each with 20
// placeholder players. Adds clubs on every run; all or nothing.
// The template's step of the history, with a restore point before it.
Step templatestep();

ExchangeResult tempvereine(Database &db, const Progress &progress = {});

// Writes the competition file 1_we.cfg: one record per league with the
// lowest-numbered clubs of its country, then the five lists of clubs on the
// qualification places. Fails, writing nothing, when a country has fewer
// clubs than its league or no national row.
ExchangeResult templiga(Database &db, const QString &path, const Progress &progress = {});

} // namespace zorbo
