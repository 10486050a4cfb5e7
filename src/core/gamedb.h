#pragma once

#include "platform/database.h"

#include <QList>
#include <QPair>

namespace zorbo {

// All but checka4 throw DbError when the database fails; its text is German
// and may be shown as it stands.

// The highest team or player number the game's files hold.
inline constexpr qint64 highestNumber = 2147483647;

// Next free number of the one team number space (vereine and
// vereine_national together): the one after the highest, 1 in an empty
// world, as 0 is the market. When the highest number is taken, the lowest
// free one. Throws DbError with a German message when none is free.
qint64 newteamnumber(Database &db);

// count free player numbers: from the one after the highest on, 0 on an
// empty table; when those would run past the highest number, the lowest free
// ones. Throws DbError with a German message when there are not enough.
QList<qint64> newplayernumbers(Database &db, int count);
qint64 newplayernumber(Database &db);

// Removes exact duplicates among the free players (same name, first name,
// country, club, position and strength), keeping the oldest row.
int a4deleteid(Database &db);

// True when the database holds the free players' table; false also when
// the database can't be read, as the answer only enables a button.
bool checka4(Database &db);

// Number of rows of each table, in the database's order.
QList<QPair<QString, qint64>> tablecounts(Database &db);

} // namespace zorbo
