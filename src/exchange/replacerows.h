#pragma once

#include "platform/database.h"

#include <QByteArray>
#include <QByteArrayView>
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

// Rows of one INSERT written many to a statement: the statement's own work
// (opening the table and its indexes, closing them) is then done once for
// many rows, not for each. A row's values are kept, in column order, until
// its batch is full; finish() writes the rows left, one by one.
class RowBatch {
public:
    // into: "INSERT INTO t (a, b, c)"; tail: what follows the VALUES, such
    // as an updatechanged() clause.
    RowBatch(Database &db, const QString &into, int columns, const QString &tail, int rows = 64);

    void integer(qint64 value);
    void real(double value);
    // Text of a game file, stored as UTF-8 like every text of the world.
    void cp1252(QByteArrayView text);
    // The row is whole; written when its batch is full.
    void endrow();
    // The row begun is not written after all.
    void droprow();
    void finish();

private:
    struct Value {
        enum Kind : quint8 { Integer, Real, Text } kind;
        qint64 integer = 0;
        double real = 0;
        qsizetype at = 0, size = 0; // of a text in m_texts
    };
    void write(Statement &st, qsizetype first, int rows);

    int m_columns;
    int m_rows;
    Statement m_many, m_one;
    std::vector<Value> m_values;
    QByteArray m_texts;
    qsizetype m_rowStart = 0;
};

// Deletes the rows of table whose whole-number key the file did not give.
void dropunread(Database &db, const QString &table, const QString &key, const std::function<bool(qint64 key)> &read);

} // namespace zorbo
