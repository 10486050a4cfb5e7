#pragma once

#include "exchange/exchangeresult.h"
#include "platform/codepage.h"
#include "platform/database.h"

namespace zorbo {

// Brings a .tea file in as a new club of the given country: a new team
// number, the file's [Team] values (NATION is the country chosen) and
// exactly 20 new players from [Spieler1] to [Spieler20], defaults for the
// sections the file lacks. All or nothing.
ExchangeResult openteamnew(Database &db, const QString &path, const QString &country, const Progress &progress = {},
                           FileEncoding encoding = FileEncoding::Detect);

// Writes a .tea file over an existing club: the club keeps its number, its
// squad rows and its players' numbers in their order; the n-th player takes
// [Spieler n]. The club moves to the country that the file names.
ExchangeResult openteamreplace(Database &db, const QString &path, qint64 club, const Progress &progress = {},
                               FileEncoding encoding = FileEncoding::Detect);

} // namespace zorbo
