#include "platform/changeset.h"

#include <sqlite3.h>

#include <cstring>

namespace zorbo {

struct ChangeRecorder::Session {
    sqlite3_session *handle = nullptr;
};

ChangeRecorder::ChangeRecorder(Database &db, QStringList leftOut) : m_session(new Session), m_leftOut(std::move(leftOut))
{
    int rc = sqlite3session_create(db.handle(), "main", &m_session->handle);
    if (rc == SQLITE_OK) {
        sqlite3session_table_filter(m_session->handle, &ChangeRecorder::keep, this);
        rc = sqlite3session_attach(m_session->handle, nullptr);
    }
    if (rc != SQLITE_OK) {
        if (m_session->handle)
            sqlite3session_delete(m_session->handle);
        delete m_session;
        throw DbError(rc, QStringLiteral("session: %1").arg(QString::fromUtf8(sqlite3_errmsg(db.handle()))));
    }
}

ChangeRecorder::~ChangeRecorder()
{
    sqlite3session_delete(m_session->handle);
    delete m_session;
}

int ChangeRecorder::keep(void *self, const char *table)
{
    const QString name = QString::fromUtf8(table);
    return static_cast<ChangeRecorder *>(self)->m_leftOut.contains(name, Qt::CaseInsensitive) ? 0 : 1;
}

QByteArray ChangeRecorder::changeset()
{
    int size = 0;
    void *data = nullptr;
    if (const int rc = sqlite3session_changeset(m_session->handle, &size, &data); rc != SQLITE_OK) {
        sqlite3_free(data);
        throw DbError(rc, QStringLiteral("changeset"));
    }
    QByteArray bytes(static_cast<const char *>(data), size);
    sqlite3_free(data);
    return bytes;
}

namespace {

// Names the row a conflict is about: its table and its key.
QString rowof(sqlite3_changeset_iter *it)
{
    const char *table = nullptr;
    int columns = 0, op = 0, indirect = 0;
    if (sqlite3changeset_op(it, &table, &columns, &op, &indirect) != SQLITE_OK)
        return QStringLiteral("eine Zeile");
    unsigned char *pk = nullptr;
    sqlite3changeset_pk(it, &pk, &columns);
    QStringList key;
    for (int i = 0; pk && i < columns; ++i) {
        if (!pk[i])
            continue;
        sqlite3_value *value = nullptr;
        if (op == SQLITE_INSERT)
            sqlite3changeset_new(it, i, &value);
        else
            sqlite3changeset_old(it, i, &value);
        if (value)
            key << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_value_text(value)));
    }
    return QStringLiteral("die Zeile %1 der Tabelle %2").arg(key.join(QLatin1Char('/')), QString::fromUtf8(table));
}

struct Applying {
    std::optional<QString> conflict;
};

int onconflict(void *context, int kind, sqlite3_changeset_iter *it)
{
    auto *applying = static_cast<Applying *>(context);
    if (!applying->conflict) {
        const QString row = rowof(it);
        switch (kind) {
        case SQLITE_CHANGESET_NOTFOUND:
            applying->conflict = QStringLiteral("%1 fehlt").arg(row);
            break;
        case SQLITE_CHANGESET_CONFLICT:
            applying->conflict = QStringLiteral("%1 gibt es schon").arg(row);
            break;
        default:
            applying->conflict = QStringLiteral("%1 wurde seither geändert").arg(row);
            break;
        }
    }
    return SQLITE_CHANGESET_ABORT;
}

} // namespace

std::optional<QString> applychangeset(Database &db, const QByteArray &changeset, bool inverse)
{
    Applying applying;
    const int rc = sqlite3changeset_apply_v2(db.handle(), int(changeset.size()), const_cast<char *>(changeset.constData()),
                                             nullptr, &onconflict, &applying, nullptr, nullptr,
                                             inverse ? SQLITE_CHANGESETAPPLY_INVERT : 0);
    if (applying.conflict)
        return applying.conflict;
    if (rc != SQLITE_OK)
        throw DbError(rc, QStringLiteral("apply changeset: %1").arg(QString::fromUtf8(sqlite3_errmsg(db.handle()))));
    return std::nullopt;
}

namespace {

// The engine's variable-length integer, as a changeset stores lengths.
void putvarint(QByteArray &out, quint64 v)
{
    char bytes[10];
    int n = 0;
    if (v & (quint64(0xff000000) << 32)) {
        bytes[8] = char(v & 0xff);
        v >>= 8;
        for (int i = 7; i >= 0; --i) {
            bytes[i] = char((v & 0x7f) | 0x80);
            v >>= 7;
        }
        out.append(bytes, 9);
        return;
    }
    char reversed[10];
    do {
        reversed[n++] = char((v & 0x7f) | 0x80);
        v >>= 7;
    } while (v != 0);
    reversed[0] = char(reversed[0] & 0x7f);
    for (int i = 0; i < n; ++i)
        bytes[i] = reversed[n - 1 - i];
    out.append(bytes, n);
}

void putbigendian(QByteArray &out, quint64 v)
{
    char bytes[8];
    for (int i = 7; i >= 0; --i, v >>= 8)
        bytes[i] = char(v & 0xff);
    out.append(bytes, 8);
}

// One value of a changeset record: the column of the row at hand.
void putvalue(QByteArray &out, sqlite3_stmt *st, int column)
{
    switch (sqlite3_column_type(st, column)) {
    case SQLITE_INTEGER:
        out.append(char(SQLITE_INTEGER));
        putbigendian(out, quint64(sqlite3_column_int64(st, column)));
        break;
    case SQLITE_FLOAT: {
        const double d = sqlite3_column_double(st, column);
        quint64 bits;
        std::memcpy(&bits, &d, sizeof bits);
        out.append(char(SQLITE_FLOAT));
        putbigendian(out, bits);
        break;
    }
    case SQLITE_TEXT:
    case SQLITE_BLOB: {
        const bool text = sqlite3_column_type(st, column) == SQLITE_TEXT;
        const void *data = text ? static_cast<const void *>(sqlite3_column_text(st, column)) : sqlite3_column_blob(st, column);
        const int size = sqlite3_column_bytes(st, column);
        out.append(char(text ? SQLITE_TEXT : SQLITE_BLOB));
        putvarint(out, quint64(size));
        out.append(static_cast<const char *>(data), size);
        break;
    }
    default:
        out.append(char(SQLITE_NULL));
        break;
    }
}

// Whether two columns of the rows at hand hold the same value, type and bytes.
bool samevalue(sqlite3_stmt *st, int a, sqlite3_stmt *other, int b)
{
    const int type = sqlite3_column_type(st, a);
    if (type != sqlite3_column_type(other, b))
        return false;
    switch (type) {
    case SQLITE_INTEGER:
        return sqlite3_column_int64(st, a) == sqlite3_column_int64(other, b);
    case SQLITE_FLOAT: {
        const double x = sqlite3_column_double(st, a), y = sqlite3_column_double(other, b);
        return std::memcmp(&x, &y, sizeof x) == 0;
    }
    case SQLITE_TEXT:
    case SQLITE_BLOB: {
        const bool text = type == SQLITE_TEXT;
        const void *x = text ? static_cast<const void *>(sqlite3_column_text(st, a)) : sqlite3_column_blob(st, a);
        const int size = sqlite3_column_bytes(st, a);
        const void *y = text ? static_cast<const void *>(sqlite3_column_text(other, b)) : sqlite3_column_blob(other, b);
        return size == sqlite3_column_bytes(other, b) && (size == 0 || std::memcmp(x, y, size_t(size)) == 0);
    }
    default:
        return true;
    }
}

// A row as a changeset keeps it: an update of the columns that differ
// between the row of before (old, from column o) and now (now, from column
// m), nothing when none does, or the whole row inserted or deleted.
void putupdate(QByteArray &rows, const QByteArray &keys, sqlite3_stmt *now, int m, sqlite3_stmt *old, int o)
{
    const int n = int(keys.size());
    // Kept from row to row, so that a whole table takes no allocation per row.
    static thread_local QByteArray older, newer;
    older.resize(0);
    newer.resize(0);
    bool changed = false;
    for (int i = 0; i < n; ++i) {
        const bool same = samevalue(now, m + i, old, o + i);
        changed = changed || !same;
        if (keys.at(i) != 0 || !same)
            putvalue(older, old, o + i);
        else
            older.append('\0');
        if (same)
            newer.append('\0');
        else
            putvalue(newer, now, m + i);
    }
    if (changed) {
        rows.append(char(SQLITE_UPDATE));
        rows.append('\0');
        rows.append(older);
        rows.append(newer);
    }
}

void putrow(QByteArray &rows, bool inserted, int n, sqlite3_stmt *st)
{
    rows.append(char(inserted ? SQLITE_INSERT : SQLITE_DELETE));
    rows.append('\0');
    for (int i = 0; i < n; ++i)
        putvalue(rows, st, i);
}

QString quoted(const QString &name)
{
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

} // namespace

QByteArray diffchangeset(Database &db, const QString &from, const QStringList &leftOut, QStringList *differing)
{
    QStringList tables;
    Statement keyed = db.prepare(QStringLiteral("SELECT s.name FROM main.sqlite_schema s WHERE s.type = 'table' AND s.name "
                                                "NOT LIKE 'sqlite_%' AND EXISTS (SELECT 1 FROM pragma_table_info(s.name, "
                                                "'main') WHERE pk > 0) ORDER BY s.rowid"));
    while (keyed.step()) {
        if (!leftOut.contains(keyed.text(0), Qt::CaseInsensitive))
            tables << keyed.text(0);
    }
    // Written as the session extension writes a changeset (see its file
    // format): per table a head with its columns and the positions of its
    // key, then the rows that differ, compared by type and bytes.
    QByteArray changes;
    const QString source = quoted(from);
    for (const QString &table : std::as_const(tables)) {
        QStringList columns, main, before, key;
        QByteArray head("T");
        QByteArray keys;
        // A key of one INTEGER column is the table's rowid.
        std::optional<QString> rowidkey;
        int rowidcolumn = 0;
        Statement info = db.prepare(QStringLiteral("SELECT name, pk, upper(type) = 'INTEGER' FROM pragma_table_info(?1, 'main') "
                                                   "ORDER BY cid"));
        info.bind(1, table);
        while (info.step()) {
            const QString column = quoted(info.text(0));
            if (info.integer(1) == 1 && info.integer(2) != 0) {
                rowidkey = column;
                rowidcolumn = int(columns.size());
            }
            columns << column;
            main << QStringLiteral("m.") + column;
            before << QStringLiteral("p.") + column;
            keys.append(char(info.integer(1)));
            if (info.integer(1) > 0)
                key << QStringLiteral("m.%1 = p.%1").arg(column);
        }
        if (key.size() != 1)
            rowidkey.reset();
        const int n = int(columns.size());
        putvarint(head, quint64(n));
        head += keys + table.toUtf8() + '\0';
        const QString name = quoted(table);
        const QString match = key.join(QStringLiteral(" AND "));
        QByteArray rows;
        if (rowidkey) {
            // Both in the order of their rowids, side by side: one pass
            // without a lookup per row.
            const QString order = QStringLiteral("SELECT %1 FROM %2.%3 ORDER BY %4");
            Statement now = db.prepare(order.arg(columns.join(QLatin1Char(',')), QStringLiteral("main"), name, *rowidkey));
            Statement old = db.prepare(order.arg(columns.join(QLatin1Char(',')), source, name, *rowidkey));
            bool more = now.step(), moreold = old.step();
            while (more || moreold) {
                const qint64 a = more ? now.integer(rowidcolumn) : 0, b = moreold ? old.integer(rowidcolumn) : 0;
                if (more && (!moreold || a < b)) {
                    putrow(rows, true, n, now.handle());
                    more = now.step();
                } else if (!more || a > b) {
                    putrow(rows, false, n, old.handle());
                    moreold = old.step();
                } else {
                    putupdate(rows, keys, now.handle(), 0, old.handle(), 0);
                    more = now.step();
                    moreold = old.step();
                }
            }
        } else {
            // Rows of both: an update of the columns that differ.
            Statement both = db.prepare(QStringLiteral("SELECT %1, %2 FROM main.%3 m JOIN %4.%3 p ON %5")
                                            .arg(main.join(QLatin1Char(',')), before.join(QLatin1Char(',')), name, source, match));
            while (both.step())
                putupdate(rows, keys, both.handle(), 0, both.handle(), n);
            // Rows of only one side: inserted since, or deleted.
            for (const bool inserted : {true, false}) {
                Statement only = db.prepare(
                    QStringLiteral("SELECT %1 FROM %2.%3 %4 WHERE NOT EXISTS (SELECT 1 FROM %5.%3 %6 WHERE %7)")
                        .arg(inserted ? main.join(QLatin1Char(',')) : before.join(QLatin1Char(',')),
                             inserted ? QStringLiteral("main") : source, name, inserted ? QStringLiteral("m") : QStringLiteral("p"),
                             inserted ? source : QStringLiteral("main"), inserted ? QStringLiteral("p") : QStringLiteral("m"), match));
                while (only.step())
                    putrow(rows, inserted, n, only.handle());
            }
        }
        if (!rows.isEmpty()) {
            changes += head + rows;
            if (differing)
                *differing << table;
        }
    }
    return changes;
}

} // namespace zorbo
