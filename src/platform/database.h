#pragma once

#include "platform/dberror.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>

#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace zorbo {

// One prepared statement. Values are always bound, never joined into the text.
class Statement {
public:
    Statement(sqlite3 *db, const QString &sql);
    ~Statement();
    Statement(Statement &&other) noexcept;
    Statement &operator=(Statement &&other) noexcept;
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    // Parameters count from 1. A null QVariant binds SQL NULL.
    Statement &bind(int index, const QVariant &value);
    Statement &bind(int index, qint64 value);
    Statement &bind(int index, int value) { return bind(index, qint64(value)); }
    Statement &bind(int index, double value);
    Statement &bind(int index, const QString &value);
    Statement &bind(int index, const char *value) { return bind(index, QString::fromUtf8(value)); }
    Statement &bind(int index, const QByteArray &blob);
    Statement &bindNull(int index);
    // An empty optional binds SQL NULL.
    template <typename T>
    Statement &bind(int index, const std::optional<T> &value)
    {
        return value ? bind(index, *value) : bindNull(index);
    }

    template <typename... Args>
    Statement &bindAll(const Args &...args)
    {
        int i = 0;
        (bind(++i, args), ...);
        return *this;
    }

    // Advances to the next row; false when there is none. Throws DbError.
    bool step();
    // Runs to the end and resets, keeping the bindings' slots for reuse.
    void exec();
    // Ready to run again; bindings are cleared.
    void reset();

    int columnCount() const;
    QString columnName(int column) const;
    // Column by name, compared without regard to case (umlauts included);
    // -1 when the row has no such column.
    int columnIndex(const QString &name) const;

    bool isNull(int column) const;
    QVariant value(int column) const;
    QVariant value(const QString &name) const;
    qint64 integer(int column) const;
    double real(int column) const;
    QString text(int column) const;
    QByteArray blob(int column) const;

    sqlite3_stmt *handle() const { return m_stmt; }

private:
    [[noreturn]] void failBind(int rc, int index) const;

    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_stmt = nullptr;
};

struct ColumnInfo {
    QString name;
    QString type; // "INTEGER" (whole number), "REAL" (number) or "TEXT"
    bool isText() const { return type.compare(QLatin1String("TEXT"), Qt::CaseInsensitive) == 0; }
    bool isInteger() const { return type.compare(QLatin1String("INTEGER"), Qt::CaseInsensitive) == 0; }
};

// What a statement did to a row, as the update hook tells it.
enum class RowChange { Insert, Update, Delete };

// Told of each row that an INSERT, UPDATE or DELETE changes in a table with
// rowids: how, the table (UTF-8, spelt as in the schema) and the rowid. The
// engine leaves out the rows that a DELETE without WHERE clears at once, the
// rows of tables WITHOUT ROWID and those that REPLACE removes; totalChanges()
// counts the first two. The hook must not use the database.
using UpdateHook = std::function<void(RowChange change, const char *table, qint64 rowid)>;

// The one open database of the program, an SQLite file. A Database belongs
// to the thread that uses it; it is never shared between threads.
class Database {
public:
    enum Mode { ReadWrite, ReadOnly };
    // Opens the file, creating it when it is missing unless mode is
    // ReadOnly. Throws DbError when it cannot be opened. Every connection
    // knows the SQL function samename() of platform/names.h and the
    // collation deutsch of platform/germanorder.h.
    explicit Database(const QString &path, Mode mode = ReadWrite);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    const QString &path() const { return m_path; }

    Statement prepare(const QString &sql);
    // Runs one or more statements that take no values.
    void exec(const QString &sql);

    // First column of the first row, bound with args; null when no row.
    template <typename... Args>
    QVariant scalar(const QString &sql, const Args &...args)
    {
        Statement st = prepare(sql);
        st.bindAll(args...);
        return st.step() ? st.value(0) : QVariant();
    }

    // Runs a statement with bound values; returns the number of changed rows.
    template <typename... Args>
    int run(const QString &sql, const Args &...args)
    {
        Statement st = prepare(sql);
        st.bindAll(args...);
        st.exec();
        return changes();
    }

    int changes() const;
    // Rows inserted, changed or deleted since the database was opened.
    qint64 totalChanges() const;
    qint64 lastInsertId() const;
    // Replaces the update hook; an empty one removes it.
    void setUpdateHook(UpdateHook hook);

    // Copies the whole database page by page into a new file at path (an
    // existing file there is replaced), or replaces this database's content
    // with the file's. Not inside a transaction. Throw DbError.
    void copyto(const QString &path);
    void copyfrom(const QString &path);

    QStringList tables() const;
    bool hasTable(const QString &name) const;
    QList<ColumnInfo> columns(const QString &table) const;

    sqlite3 *handle() const { return m_db; }

private:
    sqlite3 *m_db = nullptr;
    QString m_path;
    UpdateHook m_hook;
    friend class Transaction;
    int m_savepoints = 0;
};

// All or nothing: changes made while it lives are kept only by commit().
// Nests through savepoints, so an operation may call another one.
class Transaction {
public:
    explicit Transaction(Database &db);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    void commit();

private:
    Database &m_db;
    QString m_name;
    bool m_done = false;
};

} // namespace zorbo
