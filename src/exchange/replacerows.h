#pragma once

#include "platform/database.h"

#include <QString>
#include <functional>

namespace zorbo {

// A configuration file replaces whole tables, but writes only the rows that
// differ: a row that stays as it was is not touched, so that a file read
// again changes nothing (and the history records nothing).

// The clause behind an INSERT into table that turns it into an update of
// the row with the same key, taken only when a column differs; the columns
// the INSERT leaves out become Null, as in a new row.
QString updatechanged(Database &db, const QString &table, const QString &key);

// Deletes the rows of table whose whole-number key the file did not give.
void dropunread(Database &db, const QString &table, const QString &key, const std::function<bool(qint64 key)> &read);

} // namespace zorbo
