#include "exchange/replacerows.h"

#include <QList>
#include <QStringList>

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
