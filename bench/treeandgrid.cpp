// The two steps a user waits for most: the data of the tree's rebuild and
// the filling of the player grid with the transfer market.
// World: 250 countries, 5,000 clubs, 100,000 club players and the market's 1,700.
// Usage: bench-treeandgrid [runs]
#include "core/market.h"
#include "core/schema.h"
#include "core/teamtree.h"
#include "editor/playergrid.h"

#include "timing.h"
#include "world100k.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace zorbo;

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
    zorbo::bench::buildWorld(*o.db);

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
