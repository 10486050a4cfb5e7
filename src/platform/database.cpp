#include "platform/database.h"

#include "platform/germanorder.h"
#include "platform/names.h"

#include <sqlite3.h>

#include <QFile>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace zorbo {

namespace {

// The user reads the German words for the result code; the engine's own
// text and the statement go into the detail for developers.
// The file of the connection's main database, for messages.
QString fileof(sqlite3 *db)
{
    const char *name = db ? sqlite3_db_filename(db, "main") : nullptr;
    return name ? QString::fromUtf8(name) : QString();
}

[[noreturn]] void fail(sqlite3 *db, int rc, const QString &what)
{
    QString detail = what;
    if (db)
        detail += QStringLiteral(": ") + QString::fromUtf8(sqlite3_errmsg(db));
    throw DbError(rc, detail, fileof(db));
}

} // namespace

void Statement::failBind(int rc, int index) const
{
    fail(m_db, rc, QStringLiteral("bind %1 in %2").arg(index).arg(QString::fromUtf8(sqlite3_sql(m_stmt)).left(200)));
}

Statement::Statement(sqlite3 *db, const QString &sql) : m_db(db)
{
    const QByteArray utf8 = sql.toUtf8();
    const int rc = sqlite3_prepare_v2(db, utf8.constData(), int(utf8.size()), &m_stmt, nullptr);
    if (rc != SQLITE_OK)
        fail(db, rc, QStringLiteral("prepare %1").arg(sql.left(200)));
}

Statement::~Statement()
{
    sqlite3_finalize(m_stmt);
}

Statement::Statement(Statement &&other) noexcept : m_db(other.m_db), m_stmt(other.m_stmt)
{
    other.m_stmt = nullptr;
}

Statement &Statement::operator=(Statement &&other) noexcept
{
    if (this != &other) {
        sqlite3_finalize(m_stmt);
        m_db = other.m_db;
        m_stmt = other.m_stmt;
        other.m_stmt = nullptr;
    }
    return *this;
}

Statement &Statement::bind(int index, const QVariant &value)
{
    if (value.isNull())
        return bindNull(index);
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
        return bind(index, value.toLongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return bind(index, value.toDouble());
    default:
        return bind(index, value.toString());
    }
}

Statement &Statement::bind(int index, qint64 value)
{
    if (const int rc = sqlite3_bind_int64(m_stmt, index, value); rc != SQLITE_OK)
        failBind(rc, index);
    return *this;
}

Statement &Statement::bind(int index, double value)
{
    if (const int rc = sqlite3_bind_double(m_stmt, index, value); rc != SQLITE_OK)
        failBind(rc, index);
    return *this;
}

Statement &Statement::bind(int index, const QString &value)
{
    const QByteArray utf8 = value.toUtf8();
    if (const int rc = sqlite3_bind_text(m_stmt, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT); rc != SQLITE_OK)
        failBind(rc, index);
    return *this;
}

Statement &Statement::bind(int index, const QByteArray &blob)
{
    if (const int rc = sqlite3_bind_blob64(m_stmt, index, blob.constData(), sqlite3_uint64(blob.size()), SQLITE_TRANSIENT);
        rc != SQLITE_OK)
        failBind(rc, index);
    return *this;
}

Statement &Statement::bindNull(int index)
{
    if (const int rc = sqlite3_bind_null(m_stmt, index); rc != SQLITE_OK)
        failBind(rc, index);
    return *this;
}

bool Statement::step()
{
    const int rc = sqlite3_step(m_stmt);
    if (rc == SQLITE_ROW)
        return true;
    if (rc == SQLITE_DONE)
        return false;
    const QString sql = QString::fromUtf8(sqlite3_sql(m_stmt)).left(200);
    QString detail = QStringLiteral("step %1: ").arg(sql) + QString::fromUtf8(sqlite3_errmsg(m_db));
    sqlite3_reset(m_stmt);
    throw DbError(rc, detail, fileof(m_db));
}

void Statement::exec()
{
    while (step()) {
    }
    sqlite3_reset(m_stmt);
}

void Statement::reset()
{
    sqlite3_reset(m_stmt);
    sqlite3_clear_bindings(m_stmt);
}

int Statement::columnCount() const
{
    return sqlite3_column_count(m_stmt);
}

QString Statement::columnName(int column) const
{
    return QString::fromUtf8(sqlite3_column_name(m_stmt, column));
}

int Statement::columnIndex(const QString &name) const
{
    const int n = columnCount();
    for (int i = 0; i < n; ++i) {
        if (columnName(i).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_stmt, column) == SQLITE_NULL;
}

QVariant Statement::value(int column) const
{
    switch (sqlite3_column_type(m_stmt, column)) {
    case SQLITE_INTEGER:
        return QVariant(qint64(sqlite3_column_int64(m_stmt, column)));
    case SQLITE_FLOAT:
        return QVariant(sqlite3_column_double(m_stmt, column));
    case SQLITE_NULL:
        return QVariant();
    default:
        return QVariant(text(column));
    }
}

QVariant Statement::value(const QString &name) const
{
    const int i = columnIndex(name);
    return i < 0 ? QVariant() : value(i);
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_stmt, column);
}

double Statement::real(int column) const
{
    return sqlite3_column_double(m_stmt, column);
}

QString Statement::text(int column) const
{
    const auto *data = reinterpret_cast<const char *>(sqlite3_column_text(m_stmt, column));
    return QString::fromUtf8(data, sqlite3_column_bytes(m_stmt, column));
}

QByteArray Statement::blob(int column) const
{
    const auto *data = static_cast<const char *>(sqlite3_column_blob(m_stmt, column));
    return QByteArray(data, sqlite3_column_bytes(m_stmt, column));
}

Database::Database(const QString &path, Mode mode) : m_path(path)
{
    const QByteArray name = path.toUtf8();
    // A connection serves one thread only: without the engine's mutex, each
    // of the millions of calls of a whole import is cheaper.
    const int flags = (mode == ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE) | SQLITE_OPEN_NOMUTEX;
    int rc = sqlite3_open_v2(name.constData(), &m_db, flags, nullptr);
    if (rc == SQLITE_OK)
        rc = registernamefunctions(m_db);
    if (rc == SQLITE_OK)
        rc = registergermanorder(m_db);
    if (rc != SQLITE_OK) {
        const QString detail = QStringLiteral("open %1: %2").arg(path, QString::fromUtf8(sqlite3_errmsg(m_db)));
        sqlite3_close(m_db);
        m_db = nullptr;
        throw DbError(rc, detail);
    }
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_timeout(m_db, 2000);
}

Database::~Database()
{
    sqlite3_close_v2(m_db);
}

Statement Database::prepare(const QString &sql)
{
    return Statement(m_db, sql);
}

void Database::exec(const QString &sql)
{
    char *err = nullptr;
    if (const int rc = sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, &err); rc != SQLITE_OK) {
        const QString detail = QStringLiteral("exec %1: %2").arg(sql.left(200), QString::fromUtf8(err ? err : ""));
        sqlite3_free(err);
        throw DbError(rc, detail, fileof(m_db));
    }
}

int Database::changes() const
{
    return sqlite3_changes(m_db);
}

qint64 Database::totalChanges() const
{
    return sqlite3_total_changes64(m_db);
}

qint64 Database::lastInsertId() const
{
    return sqlite3_last_insert_rowid(m_db);
}

void Database::setUpdateHook(UpdateHook hook)
{
    m_hook = std::move(hook);
    if (!m_hook) {
        sqlite3_update_hook(m_db, nullptr, nullptr);
        return;
    }
    sqlite3_update_hook(
        m_db,
        [](void *self, int op, const char *, const char *table, sqlite3_int64 rowid) {
            const RowChange change = op == SQLITE_INSERT ? RowChange::Insert
                : op == SQLITE_DELETE                    ? RowChange::Delete
                                                         : RowChange::Update;
            static_cast<Database *>(self)->m_hook(change, table, rowid);
        },
        this);
}

namespace {

// Copies the main database of from into the main database of to.
void copydatabase(sqlite3 *to, sqlite3 *from, const QString &what)
{
    sqlite3_backup *backup = sqlite3_backup_init(to, "main", from, "main");
    if (!backup)
        fail(to, sqlite3_errcode(to), what);
    const int stepped = sqlite3_backup_step(backup, -1);
    const int finished = sqlite3_backup_finish(backup);
    if (stepped != SQLITE_DONE)
        fail(to, stepped, what);
    if (finished != SQLITE_OK)
        fail(to, finished, what);
}

} // namespace

namespace {

// The file of the database at source copied to path byte for byte and
// written through to the disk; false when a file can't be read or written.
bool copyfile(const QString &source, const QString &path)
{
    QFile from(source), to(path);
    if (!from.open(QIODevice::ReadOnly) || !to.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QByteArray chunk(1 << 20, Qt::Uninitialized);
    for (;;) {
        const qint64 got = from.read(chunk.data(), chunk.size());
        if (got < 0)
            return false;
        if (got == 0)
            break;
        if (to.write(chunk.constData(), got) != got)
            return false;
    }
    if (!to.flush())
        return false;
#ifdef Q_OS_UNIX
    if (::fsync(to.handle()) != 0)
        return false;
#endif
    to.close();
    return to.error() == QFileDevice::NoError;
}

} // namespace

void Database::copyto(const QString &path)
{
    // Outside the write-ahead log's mode the file holds the database as last
    // committed (a run's changes stay in memory or its journal until the
    // commit), and a read transaction keeps every writer from changing it
    // meanwhile: a copy of the file is the database, and much quicker than
    // one page by page.
    const QString mode = scalar(QStringLiteral("PRAGMA journal_mode")).toString();
    if (mode.compare(QLatin1String("wal"), Qt::CaseInsensitive) != 0 && sqlite3_get_autocommit(m_db)) {
        exec(QStringLiteral("BEGIN"));
        bool copied = false;
        try {
            scalar(QStringLiteral("SELECT count(*) FROM sqlite_schema"));
            copied = copyfile(m_path, path);
        } catch (const DbError &) {
            exec(QStringLiteral("ROLLBACK"));
            throw;
        }
        exec(QStringLiteral("COMMIT"));
        if (copied)
            return;
        QFile::remove(path);
    }
    sqlite3 *target = nullptr;
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &target,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (rc != SQLITE_OK) {
        const QString detail = QStringLiteral("open %1: %2").arg(path, QString::fromUtf8(sqlite3_errmsg(target)));
        sqlite3_close(target);
        throw DbError(rc, detail);
    }
    try {
        copydatabase(target, m_db, QStringLiteral("copy to %1").arg(path));
    } catch (...) {
        sqlite3_close(target);
        throw;
    }
    sqlite3_close(target);
}

void Database::copyfrom(const QString &path)
{
    Database source(path, ReadOnly);
    copydatabase(m_db, source.m_db, QStringLiteral("copy from %1").arg(path));
}

QStringList Database::tables() const
{
    Statement st(m_db, QStringLiteral("SELECT name FROM sqlite_schema WHERE type='table' "
                                      "AND name NOT LIKE 'sqlite_%' ORDER BY rowid"));
    QStringList names;
    while (st.step())
        names << st.text(0);
    return names;
}

bool Database::hasTable(const QString &name) const
{
    for (const QString &t : tables()) {
        if (t.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

QList<ColumnInfo> Database::columns(const QString &table) const
{
    Statement st(m_db, QStringLiteral("SELECT name, type FROM pragma_table_info(?1)"));
    st.bind(1, table);
    QList<ColumnInfo> cols;
    while (st.step())
        cols.append({st.text(0), st.text(1)});
    return cols;
}

Transaction::Transaction(Database &db)
    : m_db(db), m_name(QStringLiteral("zorbo_%1").arg(++db.m_savepoints))
{
    try {
        m_db.exec(QStringLiteral("SAVEPOINT ") + m_name);
    } catch (...) {
        --m_db.m_savepoints;
        throw;
    }
}

Transaction::~Transaction()
{
    if (!m_done) {
        try {
            m_db.exec(QStringLiteral("ROLLBACK TO ") + m_name + QStringLiteral("; RELEASE ") + m_name);
        } catch (const DbError &) {
            // The savepoint is already gone when the engine rolled back by itself.
        }
    }
    --m_db.m_savepoints;
}

void Transaction::commit()
{
    m_db.exec(QStringLiteral("RELEASE ") + m_name);
    m_done = true;
}

} // namespace zorbo
