#include "exchange/replacerows.h"

#include "platform/codepage.h"
#include "platform/dberror.h"

#include <QList>
#include <QStringList>
#include <sqlite3.h>

namespace zorbo {

// Table and column names come from the program and the schema, never from a file.
QString updatechanged(Database &db, const QString &table, const QString &key)
{
    QStringList set, olds, news;
    for (const ColumnInfo &c : db.columns(table)) {
        const QString name = QLatin1Char('"') + c.name + QLatin1Char('"');
        set << name + QStringLiteral(" = excluded.") + name;
        olds << table + QLatin1Char('.') + name;
        news << QStringLiteral("excluded.") + name;
    }
    return QStringLiteral("ON CONFLICT (%1) DO UPDATE SET %2 WHERE (%3) IS NOT (%4)")
        .arg(key, set.join(QStringLiteral(", ")), olds.join(QStringLiteral(", ")), news.join(QStringLiteral(", ")));
}

bool KeySet::insert(qint64 key)
{
    if (key < 0 || key >= bitKeys) {
        const qsizetype before = m_others.size();
        m_others.insert(key);
        return m_others.size() != before;
    }
    const size_t word = size_t(key >> 6);
    if (word >= m_bits.size())
        m_bits.resize(std::max(word + 1, m_bits.size() * 2));
    const quint64 bit = quint64(1) << (key & 63);
    const bool fresh = !(m_bits[word] & bit);
    m_bits[word] |= bit;
    return fresh;
}

bool KeySet::contains(qint64 key) const
{
    if (key < 0 || key >= bitKeys)
        return m_others.contains(key);
    const size_t word = size_t(key >> 6);
    return word < m_bits.size() && (m_bits[word] & (quint64(1) << (key & 63)));
}

namespace {

QString rowsof(int columns, int rows)
{
    QStringList marks, all;
    for (int c = 0; c < columns; ++c)
        marks << QStringLiteral("?");
    const QString row = QLatin1Char('(') + marks.join(QLatin1Char(',')) + QLatin1Char(')');
    for (int r = 0; r < rows; ++r)
        all << row;
    return all.join(QLatin1Char(','));
}

} // namespace

RowBatch::RowBatch(Database &db, const QString &into, int columns, const QString &tail, int rows)
    : m_columns(columns), m_rows(rows),
      m_many(db.prepare(into + QStringLiteral(" VALUES ") + rowsof(columns, rows) + QLatin1Char(' ') + tail)),
      m_one(db.prepare(into + QStringLiteral(" VALUES ") + rowsof(columns, 1) + QLatin1Char(' ') + tail))
{
    m_values.reserve(size_t(columns) * size_t(rows));
}

void RowBatch::integer(qint64 value)
{
    m_values.push_back(Value{.kind = Value::Integer, .integer = value});
}

void RowBatch::real(double value)
{
    m_values.push_back(Value{.kind = Value::Real, .real = value});
}

void RowBatch::cp1252(QByteArrayView text)
{
    const qsizetype at = m_texts.size();
    bool ascii = true;
    for (char c : text)
        ascii = ascii && static_cast<unsigned char>(c) < 0x80;
    if (ascii)
        m_texts.append(text.data(), text.size());
    else
        appendCp1252AsUtf8(m_texts, text);
    m_values.push_back(Value{.kind = Value::Text, .at = at, .size = m_texts.size() - at});
}

void RowBatch::endrow()
{
    m_rowStart = qsizetype(m_values.size());
    if (m_rowStart == qsizetype(m_columns) * m_rows) {
        write(m_many, 0, m_rows);
        m_values.clear();
        m_texts.resize(0); // keeps its memory for the next batch
        m_rowStart = 0;
    }
}

void RowBatch::droprow()
{
    m_values.resize(size_t(m_rowStart));
}

void RowBatch::finish()
{
    droprow();
    for (qsizetype first = 0; first < m_rowStart; first += m_columns)
        write(m_one, first, 1);
    m_values.clear();
    m_texts.resize(0); // keeps its memory for the next batch
    m_rowStart = 0;
}

void RowBatch::write(Statement &st, qsizetype first, int rows)
{
    sqlite3_stmt *handle = st.handle();
    // Empty text must stay text, not become Null: never bind a null pointer.
    const char *texts = m_texts.isEmpty() ? "" : m_texts.constData();
    for (int i = 0; i < m_columns * rows; ++i) {
        const Value &v = m_values[size_t(first + i)];
        const int rc = v.kind == Value::Integer ? sqlite3_bind_int64(handle, i + 1, v.integer)
            : v.kind == Value::Real             ? sqlite3_bind_double(handle, i + 1, v.real)
                                                : sqlite3_bind_text(handle, i + 1, texts + v.at, int(v.size), SQLITE_STATIC);
        if (rc != SQLITE_OK)
            throw DbError(rc, QStringLiteral("Wert %1 nicht gebunden").arg(i + 1));
    }
    st.exec();
}

void dropunread(Database &db, const QString &table, const QString &key, const std::function<bool(qint64 key)> &read)
{
    QList<qint64> gone;
    Statement all = db.prepare(QStringLiteral("SELECT %1 FROM %2").arg(key, table));
    while (all.step()) {
        if (!read(all.integer(0)))
            gone << all.integer(0);
    }
    Statement remove = db.prepare(QStringLiteral("DELETE FROM %1 WHERE %2 = ?1").arg(table, key));
    for (qint64 row : std::as_const(gone)) {
        remove.bind(1, row);
        remove.exec();
    }
}

} // namespace zorbo
