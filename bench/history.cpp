// The history on a whole world of 5,000 clubs and 100,000 players: a
// configuration import that replaces every player, recorded as the menu
// records it (its restore point as the way back) beside the same import
// without the history, its first undo, then undone and redone; a
// restore point of that world; and what recording costs a single team save
// (the same save with and without the history around it, both without
// waiting for the disk).
// Usage: bench-history [runs]
#include "core/world.h"
#include "editor/teamsave.h"
#include "exchange/configruns.h"
#include "exchange/playerconfig.h"
#include "exchange/teamconfigwriter.h"

#include "timing.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

using namespace zorbo;
using zorbo::bench::check;

namespace {

constexpr int clubs = 5000;
constexpr int squad = 20;

void generate(Database &db)
{
    Transaction tx(db);
    db.exec("INSERT INTO vereine_national (NUMMER, NAME, NATION) VALUES (1, 'Deutschland', 'Deutschland')");
    Statement club = db.prepare("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (?1, ?2, 'Deutschland')");
    Statement player = db.prepare("INSERT INTO spieler VALUES (?1, ?2, 'Jürgen', ?3, ?4, 'Deutschland', 180, ?5, 100, 0, 0, "
                                  "?6, 12345, 1, 3, '3,17', '')");
    Statement member = db.prepare("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)");
    qint64 p = 10000;
    for (int c = 0; c < clubs; ++c) {
        const int number = 2 + c;
        club.bindAll(number, QStringLiteral("FC Müßiggang %1").arg(number)).exec();
        for (int i = 0; i < squad; ++i, ++p) {
            player.bindAll(p, QStringLiteral("Schröder-%1").arg(p), int(p % 12) * 1000, int(p % 12) * 1000 + 1000,
                           i * 4 / squad, i + 1)
                .exec();
            member.bindAll(number, p).exec();
        }
    }
    // Every column filled, so that the clubs go out and come back in their whole form.
    const QString colours = QStringLiteral(
        "F_TRIKOT_SPIELER = ?1, F_AUSW_TRIKOT_SPIELER = ?1, F_ALTERN_TRIKOT_SPIELER = ?1, F_HOSE_SPIELER = ?1, "
        "F_AUSW_HOSE_SPIELER = ?1, F_ALTERN_HOSE_SPIELER = ?1, F_TRIKOT_WERBUNG = ?1, F_HOSE_STREIFEN = ?1, "
        "F_TRIKOT_TORWART = ?1, F_HOSE_TORWART = ?1, F_TRIKOT_TRAINER = ?1, F_HOSE_TRAINER = ?1, KURZNAME = substr(NAME, 1, 10), "
        "GRAFIK_NR = 1, STAERKE = 3, STARTPLATZ = 3, SPIELER = '', STADION_NAME = 'Waldstadion', STADT = 'Musterstadt', "
        "STADION_SITZPL = 12000, STADION_STEHPL = 8000, TRIKOT_ART = 3, TW_TRIKOT_ART = 70, AUSWEICH_TRIKOT_ART = 10, "
        "AUSWEICH_TW_TRIKOT_ART = 0");
    db.run(QStringLiteral("UPDATE vereine SET ") + colours + QStringLiteral(" WHERE NUMMER > 0"), QStringLiteral(" 48, 48, 48"));
    db.run(QStringLiteral("UPDATE vereine_national SET KLIMA = '99,121,700', KONTINENT = 'West-Europa', NATIONALTEAM = '', "
                          "LANDNAME = '', ") + colours,
           QStringLiteral("144, 32, 56"));
    tx.commit();
}


} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    QTemporaryDir dir;
    const std::unique_ptr<World> world = openworld(dir.path());
    if (!world->db())
        return 1;
    Database &db = *world->db();
    generate(db);
    // A player file in which every player differs from the world's.
    const QString sp = dir.filePath("1_sp.cfg");
    db.exec("UPDATE spieler SET NAME = NAME || '-neu', GROESSE = GROESSE + 1");
    check(exportspieler(db, sp).result);
    db.exec("UPDATE spieler SET NAME = substr(NAME, 1, length(NAME) - 4), GROESSE = GROESSE - 1");
    std::printf("world: %lld players, %d runs each\n", db.scalar("SELECT count(*) FROM spieler").toLongLong(), runs);

    // As the menu records it: the restore point the import keeps is its way
    // back, until its first undo keeps the changes. Alternating with the
    // same import without the history (and with only a restore point before
    // it), so that the figures meet the same machine; the world goes back to
    // how it was before with a plain update.
    const auto back = [&] { db.exec("UPDATE spieler SET NAME = substr(NAME, 1, length(NAME) - 4), GROESSE = GROESSE - 1"); };
    QElapsedTimer timer;
    std::vector<double> stepped, firstundos, plainimports, pointimports;
    qint64 stepbytes = 0, undonebytes = 0;
    for (int i = 0; i < runs; ++i) {
        timer.start();
        check(world->run([&](Database &d) { return importplayersrun(d, sp); }, {}, Step{"Config-Import", "Config-Import", true})
                  .result);
        stepped.push_back(double(timer.nsecsElapsed()) / 1e6);
        stepbytes = world->history().last().bytes;
        timer.restart();
        check(world->undo());
        firstundos.push_back(double(timer.nsecsElapsed()) / 1e6);
        undonebytes = world->history().last().bytes;
        timer.restart();
        check(runtransaction(db, {}, [&] { return importplayersrun(db, sp); }).result);
        plainimports.push_back(double(timer.nsecsElapsed()) / 1e6);
        back();
        timer.restart();
        check(world->keeprestorepoint("Config-Import"));
        check(runtransaction(db, {}, [&] { return importplayersrun(db, sp); }).result);
        pointimports.push_back(double(timer.nsecsElapsed()) / 1e6);
        back();
    }
    const auto median = [](std::vector<double> figures) {
        std::sort(figures.begin(), figures.end());
        return figures[figures.size() / 2];
    };
    std::printf("import of 1_sp.cfg with its step:   %8.1f ms (step of %lld kB)\n", median(stepped), stepbytes / 1024);
    std::printf("the same import without the history:%8.1f ms\n", median(plainimports));
    std::printf("the same import after a restore point, without a step: %8.1f ms\n", median(pointimports));
    std::printf("import with its step / without the history: %.2f\n", median(stepped) / median(plainimports));
    std::printf("first undo of the import (from its restore point): %8.1f ms (then a step of %lld kB)\n", median(firstundos),
                undonebytes / 1024);
    check(world->run([&](Database &d) { return importplayersrun(d, sp); }, {}, Step{"Config-Import", "Config-Import", true})
              .result);
    check(world->undo());
    check(world->redo());
    const double undo = zorbo::bench::medianms(runs, [&] {
        check(world->undo());
        check(world->redo());
    });
    std::vector<double> undos, redos;
    for (int i = 0; i < runs; ++i) {
        timer.restart();
        check(world->undo());
        undos.push_back(double(timer.nsecsElapsed()) / 1e6);
        timer.restart();
        check(world->redo());
        redos.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(undos.begin(), undos.end());
    std::sort(redos.begin(), redos.end());
    std::printf("undo of the import:                 %8.1f ms\n", undos[undos.size() / 2]);
    std::printf("redo of the import:                 %8.1f ms\n", redos[redos.size() / 2]);
    std::printf("(undo and redo in a row:            %8.1f ms)\n", undo);

    // The whole world read again from its own files, as the step records
    // it: teams, then players (the restore points left out).
    const QString tm = dir.filePath("1_tm.cfg"), same = dir.filePath("2_sp.cfg");
    check(exportvereine(db, tm).result);
    check(exportspieler(db, same).result);
    const double whole = zorbo::bench::medianms(runs, [&] {
        check(world->run([&](Database &d) { return importteamsrun(d, tm); }, {}, Step{"Teams"}).result);
        check(world->run([&](Database &d) { return importplayersrun(d, same); }, {}, Step{"Spieler"}).result);
    });
    std::printf("whole world read again (teams + players) with the history: %8.1f ms\n", whole);

    const double point = zorbo::bench::medianms(runs, [&] { check(world->keeprestorepoint("Messung")); });
    std::printf("restore point of the world:         %8.1f ms (%lld MB)\n", point,
                restorepoints(dir.path()).first().size / (1024 * 1024));

    TeamForm form = *readteam(db, 2, ClubMode);
    int round = 0;
    const auto rename = [&](Database &d) {
        const QString old = form.name;
        form.name = QStringLiteral("FC Umbenannt %1").arg(++round);
        return teamsave(d, form, false, old, 0);
    };
    // Without waiting for the disk, so that the difference is the recording's own.
    db.exec("PRAGMA synchronous = OFF");
    const double recorded = zorbo::bench::medianms(runs * 10, [&] { check(world->run(rename, {}, Step{"Verein gespeichert"})); });
    const double plain = zorbo::bench::medianms(runs * 10, [&] { check(runtransaction(db, {}, [&] { return rename(db); })); });
    std::printf("team save with its step:            %8.2f ms\n", recorded);
    std::printf("team save without the history:      %8.2f ms\n", plain);
    std::printf("recording a small step costs:       %8.2f ms\n", recorded - plain);
    return 0;
}
