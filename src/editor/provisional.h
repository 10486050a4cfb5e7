#pragma once

#include "platform/database.h"

#include <QStringList>

namespace zorbo {

// The number of a new country or club that lives only in the tree so far:
// the next free team number, or, when unsaved entries already hold numbers
// from there on, the one after the highest of them. keys: the tree's keys;
// those ending in "_" are the unsaved ones.
qint64 provisionalnumber(Database &db, const QStringList &keys);

} // namespace zorbo
