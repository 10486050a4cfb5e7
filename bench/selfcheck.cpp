// The self-check of the game's files on a whole world: 1_tm.cfg of 250
// national teams and 5,000 clubs, 1_sp.cfg of 100,000 players (and the
// market's 1,700: the benchmarks' shared world) and a wa.res
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
#include "world100k.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

using namespace zorbo;
using zorbo::bench::check;

namespace {

// The benchmarks' shared world with every field a team record of the file
// needs, so that each record reads back.
void generate(Database &db)
{
    zorbo::bench::buildWorld(db);
    Transaction tx(db);
    db.exec(R"SQL(
UPDATE vereine_national SET KURZNAME = NAME, GRAFIK_NR = 292, STAERKE = 0, STARTPLATZ = 0, SPIELER = '', STADION_NAME = 'Stadion',
  STADT = 'Stadt', KLIMA = '99,121,700', STADION_SITZPL = 8000, STADION_STEHPL = 3000, TRIKOT_ART = 16, TW_TRIKOT_ART = 62,
  AUSWEICH_TRIKOT_ART = 58, AUSWEICH_TW_TRIKOT_ART = 0, F_TRIKOT_SPIELER = '144, 32, 56', F_AUSW_TRIKOT_SPIELER = '120,  8, 24',
  F_ALTERN_TRIKOT_SPIELER = ' 48, 40,120', F_HOSE_SPIELER = '  0,  0,  0', F_AUSW_HOSE_SPIELER = '  8, 64,200',
  F_ALTERN_HOSE_SPIELER = '  0, 40,160', F_TRIKOT_WERBUNG = ' 24, 24, 24', F_HOSE_STREIFEN = '  0,  0,  0',
  F_TRIKOT_TORWART = '240,184, 32', F_HOSE_TORWART = '200,144,  8', F_TRIKOT_TRAINER = ' 24, 24, 24', F_HOSE_TRAINER = '  0,  0,  0',
  NATIONALTEAM = '', LANDNAME = '';
UPDATE vereine SET KURZNAME = 'Kurz ' || NUMMER, GRAFIK_NR = NUMMER % 1000, STAERKE = (NUMMER % 13) / 2.0, STARTPLATZ = 3, SPIELER = '',
  STADION_NAME = 'Waldstadion', STADT = 'Musterstadt', STADION_SITZPL = 12000, STADION_STEHPL = 8000, TRIKOT_ART = 3,
  TW_TRIKOT_ART = 70, AUSWEICH_TRIKOT_ART = 10, AUSWEICH_TW_TRIKOT_ART = 0, F_TRIKOT_SPIELER = '255,255,255',
  F_AUSW_TRIKOT_SPIELER = '255,255,255', F_ALTERN_TRIKOT_SPIELER = '255,255,255', F_HOSE_SPIELER = '255,255,255',
  F_AUSW_HOSE_SPIELER = ' 48, 48, 48', F_ALTERN_HOSE_SPIELER = ' 48, 48, 48', F_TRIKOT_WERBUNG = ' 48, 48, 48',
  F_HOSE_STREIFEN = ' 48, 48, 48', F_TRIKOT_TORWART = ' 24,181,220', F_HOSE_TORWART = ' 24,181,220',
  F_TRIKOT_TRAINER = ' 24,181,220', F_HOSE_TRAINER = ' 24,181,220'
  WHERE NUMMER > 0;
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
