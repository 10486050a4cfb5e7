#pragma once

#include "exchange/exchangeresult.h"
#include "platform/database.h"

#include <QDateTime>

namespace zorbo {

// Head of 1_tm.cfg, lines 1 to 11, as one text ending in CR LF.
QString tm_header(Database &db, const QDateTime &now);

// The squad line of a team: eight blanks, SPIELER, padding and the player
// numbers of its vereinspieler rows in double quotes; the bare keyword when
// the team has none.
QString tm_player(Database &db, qint64 team);

// Writes all clubs, then all national teams, into a new 1_tm.cfg. Null
// columns get no line, so the transfer market goes out as the short record.
ExchangeResult exportvereine(Database &db, const QString &path, const Progress &progress = {},
                             const QDateTime &now = QDateTime::currentDateTime(), bool nearest = false);

} // namespace zorbo
