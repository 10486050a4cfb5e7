// Two worlds of 5,000 clubs and 100,000 players that differ in 10,000
// players (1,000 of them in another club) and 500 clubs: their comparison,
// its German summary, the change file written, and the file applied to the
// first world (alone, and as the menu does it: one step after a restore point).
// Usage: bench-worlddiff [runs]
#include "core/world.h"
#include "exchange/changefile.h"
#include "exchange/worlddiff.h"

#include "timing.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdio>

using namespace zorbo;
using zorbo::bench::check;
using zorbo::bench::medianms;

namespace {

void generate(Database &db)
{
    Transaction tx(db);
    db.exec(R"SQL(
INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT)
  VALUES (1, 'Deutschland', 'Deutschland', 'West-Europa'), (2, 'Österreich', 'Österreich', 'West-Europa');
WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 4999)
INSERT INTO vereine (NUMMER, NAME, KURZNAME, NATION, TRIKOT_ART, F_TRIKOT_SPIELER, F_HOSE_SPIELER, STADT)
  SELECT 10 + i, 'FC Müßiggang ' || i, 'Müßig' || i, CASE WHEN i % 2 THEN 'Österreich' ELSE 'Deutschland' END,
         i % 80, '255,255,255', ' 48, 48, 48', 'Musterstadt' FROM n;
WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 99999)
INSERT INTO spieler (NUMMER, NAME, VORNAME, "Stärke", "Max_Stärke", NATION, GROESSE, ART, "REST_EINSÄTZE",
                     RUECKENNUMMER, GESICHT, HAUTFARBE, HAARFARBE, ERLERNT, GESPERRT)
  SELECT 10000 + i, 'Schröder-' || i, 'J.', (i % 12) * 1000, (i % 12) * 1000 + 1000, 'Deutschland', 180, i % 4, 100,
         i % 20 + 1, 12345, 1, 3, '3,17', '' FROM n;
INSERT INTO kaderzeilen (verein, spieler) SELECT 10 + (NUMMER - 10000) / 20, NUMMER FROM spieler ORDER BY NUMMER;
)SQL");
    tx.commit();
}

// The other modder's world: 10,000 players changed, 1,000 of them moved,
// 500 clubs renamed with other kit colours.
void differ(Database &db)
{
    Transaction tx(db);
    db.exec(R"SQL(
UPDATE spieler SET NAME = NAME || ' II', "Stärke" = "Stärke" + 2000, ERLERNT = '3,17,20' WHERE NUMMER >= 10000 AND NUMMER % 10 = 0;
UPDATE kaderzeilen SET verein = 10 + (verein - 10 + 7) % 5000 WHERE spieler >= 10000 AND spieler % 100 = 0;
UPDATE vereine SET NAME = NAME || ' 09', F_HOSE_SPIELER = '  0,128,  0' WHERE NUMMER > 0 AND NUMMER % 10 = 0;
)SQL");
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
    const QString otherPath = dir.filePath("andere.mdb");
    db.copyto(otherPath);
    {
        Database other(otherPath);
        differ(other);
    }
    std::printf("worlds: %lld players, %lld clubs each; %d runs each\n", db.scalar("SELECT count(*) FROM spieler").toLongLong(),
                db.scalar("SELECT count(*) FROM vereine").toLongLong(), runs);

    QByteArray changeset;
    const double diff = medianms(runs, [&] {
        OtherWorld other(db, otherPath);
        check(other.result());
        changeset = tablediff(db, OtherWorld::schema, QStringLiteral("main"));
    });
    QList<EntityChange> changes;
    const double summary = medianms(runs, [&] {
        OtherWorld other(db, otherPath);
        changes = summarize(db, changeset, QStringLiteral("main"), OtherWorld::schema);
    });
    const ChangeCounts counts = countchanges(changes);
    std::printf("diff (changeset of %lld kB):          %8.1f ms\n", qint64(changeset.size() / 1024), diff);
    std::printf("summary (%d changes: %s): %8.1f ms\n", counts.total(), qPrintable(counts.text()), summary);
    const double whole = medianms(runs, [&] { check(diffworlds(db, otherPath).result); });
    std::printf("Welten vergleichen, both together:     %8.1f ms\n", whole);

    // The file made on the other side: what turns this world into that one.
    const QString file = dir.filePath("aenderungen.zae");
    std::unique_ptr<Database> other = std::make_unique<Database>(otherPath);
    const double exported = medianms(runs, [&] {
        const ChangeFileRead made = changesagainst(*other, db.path(), QStringLiteral("Messung"));
        check(made.result);
        check(writechangefile(file, made.file));
    });
    other.reset();
    std::printf("export --against (diff, summary, fingerprint, file): %8.1f ms\n", exported);
    const double print = medianms(runs, [&] { worldfingerprint(db); });
    std::printf("(of which the fingerprint of a world:  %8.1f ms)\n", print);
    const double read = medianms(runs, [&] { check(readchangefile(file).result); });
    std::printf("change file read and checked:          %8.1f ms\n", read);

    const ChangeFileRead loaded = readchangefile(file);
    const double preview = medianms(runs, [&] { check(previewchanges(db, loaded.file.changeset).result); });
    std::printf("preview (conflicts, rolled back):      %8.1f ms\n", preview);
    const double applied = medianms(runs, [&] {
        Transaction tx(db);
        const ApplyOutcome done = applychanges(db, loaded.file.changeset, {});
        check(done.result);
        if (done.applied == 0)
            std::exit(1);
    });
    std::printf("apply alone (rolled back):             %8.1f ms\n", applied);
    std::vector<double> steps;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        check(applychangefile(*world, file, loaded.file, {}).result);
        steps.push_back(double(timer.nsecsElapsed()) / 1e6);
        check(world->undo());
    }
    std::sort(steps.begin(), steps.end());
    std::printf("apply as one step after a restore point: %8.1f ms\n", steps[steps.size() / 2]);

    // The same changes as a step of the history, exported from there.
    check(applychangefile(*world, file, loaded.file, {}).result);
    const qint64 step = world->history().last().id;
    const QString since = dir.filePath("seit.zae");
    const double fromsteps = medianms(runs, [&] {
        const ChangeFileRead made = changessince(db, step, QStringLiteral("Messung"));
        check(made.result);
        check(writechangefile(since, made.file));
    });
    std::printf("export --since (steps combined, summary, fingerprint, file): %8.1f ms\n", fromsteps);
    return 0;
}
