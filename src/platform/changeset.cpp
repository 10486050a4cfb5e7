#include "platform/changeset.h"

#include <sqlite3.h>

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

} // namespace zorbo
