#pragma once

#include "platform/database.h"

#include <QList>
#include <QPair>

namespace zorbo {

// All but checka4 throw DbError when the database fails; its text is German
// and may be shown as it stands.

// Next free number of the one team number space (vereine and
// vereine_national together); 1 in an empty world, as 0 is the market.
qint64 newteamnumber(Database &db);

// Next free player number; 0 on an empty table.
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
