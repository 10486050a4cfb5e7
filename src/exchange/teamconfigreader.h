#pragma once

#include "exchange/exchangeresult.h"
#include "platform/codepage.h"
#include "platform/database.h"

namespace zorbo {

// Reads a 1_tm.cfg into vereine, vereine_national and vereinspieler, which
// then hold what the file holds, as if they had been emptied first. A
// record is told by its number of lines: 4 (short club), 28 (club) or 32
// (national team); it gives the row of its number in its table and, when
// its SPIELER line lists players, the team's squad (a later record of the
// same team wins). Rows that stay as they were are not written. All or nothing: a file
// that cannot be read to its end changes no row, and the message names the
// file, the line and what was wrong.
ExchangeResult importvereine(Database &db, const QString &path, const Progress &progress = {},
                            FileEncoding encoding = FileEncoding::Detect);

} // namespace zorbo
