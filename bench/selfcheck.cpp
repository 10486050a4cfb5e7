// The self-check of the game's files on a whole world: 1_tm.cfg of 250
// national teams and 5,000 clubs, 1_sp.cfg of 100,000 players and a wa.res
// of 1,000 crests of 64 x 64 pixels, each read into a scratch world, written
// back and compared. Reports the median of the runs for each file and for
// all three; the target is under 3 s for all three.
// Usage: bench-selfcheck [runs]
#include "core/defaultfolders.h"
#include "core/gamefiles.h"
#include "core/schema.h"
#include "core/settings.h"
#include "exchange/cfgcheck.h"
#include "exchange/playerconfig.h"
#include "exchange/teamconfigwriter.h"
#include "resources/crestcheck.h"
#include "resources/crestfiles.h"
#include "resources/crestrun.h"

#include "timing.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

using namespace zorbo;
using zorbo::bench::check;

namespace {

// The world in a few statements: every club with its 20 players.
void generate(Database &db)
{
    Transaction tx(db);
    db.exec(R"SQL(
INSERT INTO vereine (NUMMER, NAME, GRAFIK_NR, SPIELER) VALUES (0, 'TRANSFERMARKT', 999, '');
WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n WHERE x < 250)
INSERT INTO vereine_national SELECT x, 'Land ' || x || ' Großmünster', 'Land ' || x, 292, 0, 0, '', 'Stadion', 'Stadt',
  '99,121,700', 'Land ' || x, 'West-Europa', 8000, 3000, 16, 62, 58, 0, '144, 32, 56', '120,  8, 24', ' 48, 40,120',
  '  0,  0,  0', '  8, 64,200', '  0, 40,160', ' 24, 24, 24', '  0,  0,  0', '240,184, 32', '200,144,  8', ' 24, 24, 24',
  '  0,  0,  0', '', '' FROM n;
WITH RECURSIVE n(x) AS (SELECT 251 UNION ALL SELECT x + 1 FROM n WHERE x < 5250)
INSERT INTO vereine SELECT x, 'FC Müßiggang ' || x, 'Müßig ' || x, x % 1000, (x % 13) / 2.0, 3, '', 'Waldstadion',
  'Musterstadt', 'Land ' || (x % 250 + 1) || ' Großmünster', 12000, 8000, 3, 70, 10, 0, '255,255,255', '255,255,255',
  '255,255,255', '255,255,255', ' 48, 48, 48', ' 48, 48, 48', ' 48, 48, 48', ' 48, 48, 48', ' 24,181,220', ' 24,181,220',
  ' 24,181,220', ' 24,181,220' FROM n;
WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n WHERE x < 100000)
INSERT INTO spieler SELECT x, 'Schröder-' || x, 'Jürgen', (x % 13) * 1000, min((x % 13) * 1000 + 1000, 12000),
  'Land ' || (x % 250 + 1) || ' Großmünster', 170 + x % 30, (x % 20) * 4 / 20, 100, (x % 4) * 0.5, 0, x % 20 + 1,
  x % 100000, 1, 3, CASE WHEN x % 5 THEN '' ELSE '3,17,42' END, '' FROM n;
WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n WHERE x < 100000)
INSERT INTO kaderzeilen (verein, spieler) SELECT 251 + (x - 1) / 20, x FROM n;
)SQL");
    tx.commit();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    QTemporaryDir dir;
    const QString program = dir.filePath("programm");
    const QString game = dir.filePath("spiel");
    QDir().mkpath(program);
    QDir().mkpath(game);
    Settings settings = loadsettings(program);
    unpackdefaults(settings);
    const QString wappen = settings.folder(WappenFolder);
    // Every crest of wa.lst gets its file (the default crest's picture).
    check(ensureallcrests(wappen));
    {
        OpenedDb opened = opendb(program + "/zorbo.mdb");
        generate(*opened.db);
        const QDateTime when(QDate(2026, 11, 24), QTime(12, 0, 0));
        check(exportvereine(*opened.db, game + "/1_tm.cfg", {}, when));
        check(exportspieler(*opened.db, game + "/1_sp.cfg", {}, when));
    }
    const CrestRunReport packed = exportwappen(game + "/wa.res", wappen);
    check(packed.result);

    const auto one = [&](const QList<GameFileCheck> &checks) {
        return zorbo::bench::medianms(runs, [&] {
            const SelfCheckReport r = selfcheck(settings, game, checks);
            check(r.result);
            if (!r.differences.isEmpty()) {
                std::fprintf(stderr, "%s: %s\n", qPrintable(r.differences.first().place()),
                             qPrintable(r.differences.first().reason));
                std::exit(1);
            }
        });
    };
    const QList<GameFileCheck> config = configchecks();
    const double teams = one({config[0]});
    const double players = one({config[1]});
    const double crests = one({crestcheck()});
    const double all = one(configchecks() << crestcheck());
    std::printf("1_tm.cfg %.1f MB, 1_sp.cfg %.1f MB, wa.res %.1f MB with %d crests; median of %d runs\n",
                QFileInfo(game + "/1_tm.cfg").size() / 1e6, QFileInfo(game + "/1_sp.cfg").size() / 1e6,
                QFileInfo(game + "/wa.res").size() / 1e6, packed.written, runs);
    std::printf("self-check 1_tm.cfg           %8.0f ms\n", teams);
    std::printf("self-check 1_sp.cfg           %8.0f ms\n", players);
    std::printf("self-check wa.res             %8.0f ms\n", crests);
    std::printf("self-check all three          %8.0f ms (target under 3000 ms)\n", all);
    return 0;
}
