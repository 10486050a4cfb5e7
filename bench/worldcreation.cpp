// Time to create a fresh world: settings, database with reference tables,
// picture folders and the transfer market with its 1700 players.
// Usage: bench-worldcreation [runs]
#include "core/world.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 9;
    std::vector<double> ms;
    for (int i = 0; i < runs; ++i) {
        QTemporaryDir dir;
        QElapsedTimer timer;
        timer.start();
        const std::unique_ptr<zorbo::World> world = zorbo::openworld(dir.path());
        ms.push_back(timer.nsecsElapsed() / 1e6);
        if (!world->db()) {
            std::fprintf(stderr, "%s\n", qPrintable(world->messages().join('\n')));
            return 1;
        }
    }
    std::sort(ms.begin(), ms.end());
    std::printf("fresh world (settings, database, market with 1700 players): median %.1f ms over %d runs "
                "(min %.1f, max %.1f)\n",
                ms[ms.size() / 2], runs, ms.front(), ms.back());
    return 0;
}
