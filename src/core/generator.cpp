#include "core/generator.h"

#include "core/gamedb.h"

namespace zorbo {

int generatedposition(int i)
{
    // 2 goalkeepers, 6 defenders, 7 midfielders, 5 forwards per 20.
    static constexpr int positions[20] = {0, 0, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 2, 3, 3, 3, 3, 3};
    return positions[i % 20];
}

qint64 spieler20new(Database &db, qint64 team, const QString &country, int count, const Progress &progress)
{
    Transaction tx(db);
    const QList<qint64> numbers = newplayernumbers(db, count);
    Statement player = db.prepare(QStringLiteral(
        "INSERT INTO spieler VALUES (?1, ?2, 'S.', 0, 0, ?3, 180, ?4, 100, 0, 0, ?5, 0, 0, 0, '', '')"));
    Statement member = db.prepare(QStringLiteral("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)"));
    for (int i = 0; i < count; ++i) {
        const qint64 number = numbers[i];
        player.bindAll(number, QString::number(number), country, generatedposition(i), (i % 20) + 1);
        player.exec();
        member.bindAll(team, number);
        member.exec();
        report(progress, i + 1, count);
    }
    tx.commit();
    return numbers.isEmpty() ? -1 : numbers.first();
}

} // namespace zorbo
