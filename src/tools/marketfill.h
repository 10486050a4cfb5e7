#pragma once

#include "core/world.h"
#include "platform/database.h"
#include "platform/operation.h"

namespace zorbo {

struct MarketFill {
    Result result;
    int copied = 0;      // market rows overwritten
    int freePlayers = 0; // rows of a4spieler
    int slotcount = 0;   // players of the market
};

// Copies the free players, in a uniform random order, over the transfer
// market's players in ascending player number, as many as both have; the
// free players stay in a4spieler. The market rows keep their numbers,
// height, favourite position and squad number. One transaction; refused
// with a German message when there are no free players or no market slots.
// The market fill's step of the history, with a restore point before it.
Step marketfillstep();

MarketFill spielera4_nach_tmarkt(Database &db, const Progress &progress = {});

} // namespace zorbo
