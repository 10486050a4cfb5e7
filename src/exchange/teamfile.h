#pragma once

#include "exchange/exchangeresult.h"
#include "platform/database.h"

#include <QDateTime>

namespace zorbo {

// Key of a column in a team file: the column's name, except that Stärke and
// Max_Stärke become "Staerke" and "Max_Staerke".
QString teamfilekey(const QString &column);

// Writes one team with its squad as a .tea profile file, replacing any file
// of that name: [Team] with one key per column, [Spieler1], [Spieler2], …
// in the order of the player numbers. Null is written as an empty value.
ExchangeResult exportverein(Database &db, const QString &path, qint64 team, const Progress &progress = {},
                            const QDateTime &now = QDateTime::currentDateTime());

} // namespace zorbo
