#pragma once

#include "exchange/exchangeresult.h"
#include "platform/codepage.h"
#include "platform/database.h"

#include <QDateTime>

namespace zorbo {

// Head of 1_sp.cfg, lines 1 to 9, as one text ending in CR LF.
QString sp_header(Database &db, const QDateTime &now);

// Writes all players into a new 1_sp.cfg, 17 lines each.
ExchangeResult exportspieler(Database &db, const QString &path, const Progress &progress = {},
                             const QDateTime &now = QDateTime::currentDateTime(), bool nearest = false);

// Reads a 1_sp.cfg into spieler, which then holds the file's players and
// no others: the 17 lines after each NEUER_SPIELER, by position, whatever
// they hold. A player number that comes twice keeps its first record; the
// notes say which. A row that stays as it was is not written. All or
// nothing, as the team reader.
ExchangeResult importspieler(Database &db, const QString &path, const Progress &progress = {},
                             FileEncoding encoding = FileEncoding::Detect);

} // namespace zorbo
