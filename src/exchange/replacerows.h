#pragma once

#include "platform/database.h"

#include <QSet>
#include <QString>
#include <functional>
#include <vector>

namespace zorbo {

// A configuration file replaces whole tables, but writes only the rows that
// differ: a row that stays as it was is not touched, so that a file read
// again changes nothing (and the history records nothing).

// The clause behind an INSERT into table that turns it into an update of
// the row with the same key, taken only when a column differs; the columns
// the INSERT leaves out become Null, as in a new row.
QString updatechanged(Database &db, const QString &table, const QString &key);

// The keys a reader met: a bit each for the numbers a file usually holds,
// a hash for the rest.
class KeySet {
public:
    // False when the key was there already.
    bool insert(qint64 key);
    bool contains(qint64 key) const;

private:
    static constexpr qint64 bitKeys = qint64(1) << 26;
    std::vector<quint64> m_bits;
    QSet<qint64> m_others;
};

// Deletes the rows of table whose whole-number key the file did not give.
void dropunread(Database &db, const QString &table, const QString &key, const std::function<bool(qint64 key)> &read);

} // namespace zorbo
