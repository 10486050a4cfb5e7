#include "core/gamedb.h"

namespace zorbo {

qint64 newteamnumber(Database &db)
{
    const QVariant max = db.scalar(QStringLiteral("SELECT max(maxnr) FROM maxteamnr"));
    return max.isNull() ? 1 : max.toLongLong() + 1;
}

qint64 newplayernumber(Database &db)
{
    const QVariant max = db.scalar(QStringLiteral("SELECT MAX(NUMMER) FROM spieler"));
    return max.isNull() ? 0 : max.toLongLong() + 1;
}

int a4deleteid(Database &db)
{
    // IS comparisons so that rows with empty (Null) fields count as equal too.
    return db.run(QStringLiteral(
        "DELETE FROM a4spieler WHERE EXISTS (SELECT 1 FROM a4spieler o WHERE o.id < a4spieler.id "
        "AND o.name IS a4spieler.name AND o.vorname IS a4spieler.vorname AND o.land IS a4spieler.land "
        "AND o.verein IS a4spieler.verein AND o.position IS a4spieler.position "
        "AND o.staerke IS a4spieler.staerke)"));
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
