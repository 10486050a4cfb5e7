#include "core/gamedb.h"

namespace zorbo {

namespace {

// The lowest free numbers from first on, walking the numbers in use in
// ascending order; only needed once the highest number is taken.
QList<qint64> lowestfree(Statement used, qint64 first, int count)
{
    QList<qint64> free;
    qint64 next = first;
    while (free.size() < count && used.step()) {
        const qint64 n = used.integer(0);
        for (; next < n && free.size() < count; ++next)
            free << next;
        next = std::max(next, n + 1);
    }
    for (; next <= highestNumber && free.size() < count; ++next)
        free << next;
    return free;
}

} // namespace

qint64 newteamnumber(Database &db)
{
    const QVariant max = db.scalar(QStringLiteral("SELECT max(maxnr) FROM maxteamnr"));
    if (max.isNull() || max.toLongLong() < highestNumber)
        return max.isNull() ? 1 : std::max<qint64>(1, max.toLongLong() + 1);
    const QList<qint64> free = lowestfree(
        db.prepare(QStringLiteral("SELECT NUMMER FROM vereine WHERE NUMMER >= 1 UNION "
                                  "SELECT NUMMER FROM vereine_national WHERE NUMMER >= 1 ORDER BY 1")),
        1, 1);
    if (free.isEmpty())
        throw DbError("Es gibt keine freie Teamnummer mehr.");
    return free.first();
}

QList<qint64> newplayernumbers(Database &db, int count)
{
    const QVariant max = db.scalar(QStringLiteral("SELECT MAX(NUMMER) FROM spieler"));
    const qint64 first = max.isNull() ? 0 : std::max<qint64>(0, max.toLongLong() + 1);
    QList<qint64> numbers;
    if (first + count - 1 <= highestNumber) {
        for (int i = 0; i < count; ++i)
            numbers << first + i;
        return numbers;
    }
    numbers = lowestfree(db.prepare(QStringLiteral("SELECT NUMMER FROM spieler WHERE NUMMER >= 0 ORDER BY NUMMER")), 0,
                         count);
    if (numbers.size() < count)
        throw DbError(QStringLiteral("Es gibt keine %1 freien Spielernummern mehr.").arg(count).toStdString());
    return numbers;
}

qint64 newplayernumber(Database &db)
{
    return newplayernumbers(db, 1).first();
}

int a4deleteid(Database &db)
{
    // Grouping counts empty (Null) fields as equal too, and keeps the work at
    // one sort instead of a comparison of every row with every other.
    return db.run(QStringLiteral(
        "DELETE FROM a4spieler WHERE id NOT IN (SELECT min(id) FROM a4spieler "
        "GROUP BY name, vorname, land, verein, position, staerke)"));
}

bool checka4(Database &db)
{
    try {
        return db.hasTable(QStringLiteral("a4spieler"));
    } catch (const DbError &) {
        return false;
    }
}

QList<QPair<QString, qint64>> tablecounts(Database &db)
{
    QList<QPair<QString, qint64>> counts;
    for (const QString &table : db.tables()) {
        const QString quoted = QLatin1Char('"') + QString(table).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
        counts.append({table, db.scalar(QStringLiteral("SELECT count(*) FROM ") + quoted).toLongLong()});
    }
    return counts;
}

} // namespace zorbo
