#pragma once

#include "platform/database.h"

#include <array>

namespace zorbo {

// The two team tables; a national team is a row of vereine_national.
enum class TeamTable { Vereine, VereineNational };

QString teamtablename(TeamTable table);

// Colour table of a kit set: 0 e_trikotfarbeoriginal, 1 e_trikotfarbezorbode.
QString kitcolourtable(int trikotsatz);

// Copies the colours of the row's kit arts from the colour table of the kit
// set into its colour columns, for the slots chosen (home, away, keeper). A
// slot whose art has no row in the colour table keeps its colours.
void settrikotfarbe(Database &db, qint64 nummer, TeamTable table, int trikotsatz,
                    const std::array<bool, 3> &chosen = {true, true, true});

} // namespace zorbo
