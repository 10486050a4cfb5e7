#pragma once

// A world of 250 countries, 5,000 clubs, 100,000 club players and the
// market's 1,700, as the benchmarks of what a user waits for use it.
#include "core/market.h"
#include "core/schema.h"

namespace zorbo::bench {

inline void buildWorld(Database &db)
{
    Transaction tx(db);
    Statement country = db.prepare(
        "INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES (?1, ?2, ?2, ?3)");
    Statement club = db.prepare("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (?1, ?2, ?3)");
    Statement player = db.prepare(
        "INSERT INTO spieler VALUES (?1, ?2, 'S.', ?3, ?3, ?4, 180, ?5, 100, 0, 0, ?6, 0, 0, 0, '', '')");
    Statement member = db.prepare("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)");
    qint64 team = 1, nummer = 1;
    for (int c = 0; c < 250; ++c) {
        const QString name = QStringLiteral("Land %1 Ä").arg(c, 3, 10, QLatin1Char('0'));
        country.bindAll(team++, name, kontinente()[c % 12]).exec();
        for (int k = 0; k < 20; ++k) {
            const qint64 clubNr = team++;
            club.bindAll(clubNr, QStringLiteral("Verein %1 Ö").arg((k * 7919) % 20), name).exec();
            for (int p = 0; p < 20; ++p) {
                const qint64 nr = nummer++;
                player.bindAll(nr, QStringLiteral("Spieler%1").arg((nr * 7919) % 100000), int(nr % 13) * 1000, name,
                               p % 4, p + 1)
                    .exec();
                member.bindAll(clubNr, nr).exec();
            }
        }
    }
    tx.commit();
    ensuretransfermarket(db);
}

} // namespace zorbo::bench
