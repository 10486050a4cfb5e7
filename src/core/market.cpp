#include "core/market.h"

#include "core/generator.h"

namespace zorbo {

bool ensuretransfermarket(Database &db, const Progress &progress)
{
    if (!db.scalar(QStringLiteral("SELECT NUMMER FROM vereine WHERE NUMMER = 0")).isNull())
        return false;
    Transaction tx(db);
    // The squad column empty, as the team file's reader leaves it: the
    // world's export reads back into the same row.
    db.run(QStringLiteral("INSERT INTO vereine (NUMMER, NAME, GRAFIK_NR, SPIELER) VALUES (0, ?1, 999, '')"),
           QString::fromLatin1(marketName));
    spieler20new(db, 0, QString::fromLatin1(marketName), marketPlayerCount, progress);
    tx.commit();
    return true;
}

} // namespace zorbo
