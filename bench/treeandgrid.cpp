// The two steps a user waits for most: the data of the tree's rebuild and
// the filling of the player grid with the transfer market.
// World: 250 countries, 5,000 clubs, 100,000 club players and the market's 1,700.
// Usage: bench-treeandgrid [runs]
#include "core/market.h"
#include "core/schema.h"
#include "core/teamtree.h"
#include "editor/playergrid.h"

#include "timing.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace zorbo;

namespace {

void buildWorld(Database &db)
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

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 15;
    QTemporaryDir dir;
    OpenedDb o = opendb(dir.filePath(QStringLiteral("zorbo.mdb")));
    if (!o.db) {
        std::fprintf(stderr, "%s\n", qPrintable(o.message));
        return 1;
    }
    buildWorld(*o.db);

    std::size_t nodes = 0;
    const double tree = zorbo::bench::medianms(runs, [&] { nodes = load_dbteam(o.db.get()).nodes.size(); });
    PlayerGridModel model;
    const double grid = zorbo::bench::medianms(runs, [&] { model.setRows(loadspielerliste(*o.db, 0)); });
    std::printf("load_dbteam data step (%zu nodes): median %.1f ms over %d runs (target < 100 ms)\n", nodes, tree,
                runs);
    std::printf("grid with the transfer market (%d rows): median %.1f ms over %d runs (target < 50 ms)\n",
                model.rowCount(), grid, runs);
    return 0;
}
