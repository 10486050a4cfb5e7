#pragma once

#include "platform/database.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>

struct sqlite3_changeset_iter;

namespace zorbo {

// Walks the changes of a changeset, one row at a time. A value a change
// does not hold (an update's unchanged column) is an invalid QVariant, an
// SQL Null a valid one that isNull(). Throws DbError when the bytes are no
// changeset.
class ChangesetReader {
public:
    explicit ChangesetReader(const QByteArray &changeset);
    ~ChangesetReader();
    ChangesetReader(const ChangesetReader &) = delete;
    ChangesetReader &operator=(const ChangesetReader &) = delete;

    bool next();
    QString table() const { return m_table; }
    int op() const { return m_op; } // SQLITE_INSERT, SQLITE_UPDATE or SQLITE_DELETE
    int columns() const { return m_columns; }
    QVariant oldValue(int column) const;
    QVariant newValue(int column) const;
    // The row's key, its first column.
    QVariant key() const { return m_op == 18 /* SQLITE_INSERT */ ? newValue(0) : oldValue(0); }

private:
    QByteArray m_bytes;
    sqlite3_changeset_iter *m_it = nullptr;
    QString m_table;
    int m_op = 0;
    int m_columns = 0;
};

// An engine value as a QVariant in the form above; null pointer: invalid.
QVariant valueof(void *sqliteValue);

// The German name of a column of a world table, as the forms name it:
// "Name", "Heimtrikot Farbe Hose", "Talente erlernt".
QString fieldlabel(const QString &table, int position, const QString &column);

// Values as the lists show them: talents by name, strengths in stars,
// positions by name, texts in quotes, Null as "leer".
class ValueTexts {
public:
    explicit ValueTexts(Database &db);
    QString text(const QString &column, const QVariant &value) const;

private:
    QHash<qint64, QString> m_talents;
};

} // namespace zorbo
