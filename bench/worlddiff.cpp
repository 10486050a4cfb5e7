// Two worlds of 5,000 clubs and 100,000 players (the benchmarks' shared
// world, with the market's 1,700 players) that differ in 10,000
// players (1,000 of them in another club) and 500 clubs: their comparison,
// its German summary, the change file written, and the file applied to the
// first world (alone, and as the menu does it: one step after a restore point).
// Usage: bench-worlddiff [runs]
#include "core/world.h"
#include "exchange/changeapply.h"
#include "exchange/worlddiff.h"

#include "timing.h"
#include "world100k.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <ctime>

using namespace zorbo;
using zorbo::bench::check;

namespace {

// Median of runs calls of step: wall time, and the process's CPU time
// beside it (what the wall time would be on an idle machine), in ms.
struct Times {
    double wall = 0, cpu = 0;
};

double cpunow()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

Times medianms(int runs, const std::function<void()> &step)
{
    std::vector<double> cpu;
    const double wall = zorbo::bench::medianms(runs, [&] {
        const double start = cpunow();
        step();
        cpu.push_back(cpunow() - start);
    });
    std::sort(cpu.begin(), cpu.end());
    return {wall, cpu[cpu.size() / 2]};
}

void print(const char *what, const Times &t)
{
    std::printf("%-58s %8.1f ms  (CPU %7.1f ms)\n", what, t.wall, t.cpu);
}

// The other modder's world: 10,000 players changed, 1,000 of them moved
// (each to the next club of his country, the last club's to the one
// before), 500 clubs renamed with other kit colours.
void differ(Database &db)
{
    Transaction tx(db);
    db.exec(R"SQL(
UPDATE spieler SET NAME = NAME || ' II', "Stärke" = "Stärke" + 2000, ERLERNT = '3,17,20' WHERE NUMMER <= 100000 AND NUMMER % 10 = 0;
UPDATE kaderzeilen SET verein = CASE WHEN verein % 21 = 0 THEN verein - 1 ELSE verein + 1 END
  WHERE spieler <= 100000 AND spieler % 100 = 0;
UPDATE vereine SET NAME = NAME || ' 09', F_HOSE_SPIELER = '  0,128,  0'
  WHERE NUMMER IN (SELECT NUMMER FROM (SELECT NUMMER, row_number() OVER (ORDER BY NUMMER) AS r FROM vereine WHERE NUMMER > 0)
                   WHERE r % 10 = 0);
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
    db.exec("DELETE FROM kaderzeilen; DELETE FROM spieler; DELETE FROM vereine; DELETE FROM vereine_national");
    zorbo::bench::buildWorld(db);
    const QString otherPath = dir.filePath("andere.mdb");
    db.copyto(otherPath);
    {
        Database other(otherPath);
        differ(other);
    }
    std::printf("worlds: %lld players, %lld clubs each; %d runs each\n", db.scalar("SELECT count(*) FROM spieler").toLongLong(),
                db.scalar("SELECT count(*) FROM vereine").toLongLong(), runs);

    QByteArray changeset;
    const Times diff = medianms(runs, [&] {
        OtherWorld other(db, otherPath);
        check(other.result());
        changeset = tablediff(db, OtherWorld::schema, QStringLiteral("main"));
    });
    QList<EntityChange> changes;
    const Times summary = medianms(runs, [&] {
        OtherWorld other(db, otherPath);
        changes = summarize(db, changeset, QStringLiteral("main"), OtherWorld::schema);
    });
    const ChangeCounts counts = countchanges(changes);
    std::printf("changeset of %lld kB, %d changes: %s\n", qint64(changeset.size() / 1024), counts.total(), qPrintable(counts.text()));
    print("diff of the two worlds", diff);
    print("summary", summary);
    const Times whole = medianms(runs, [&] { check(diffworlds(db, otherPath).result); });
    print("Welten vergleichen (diff and summary)", whole);

    // The file made on the other side: what turns this world into that one.
    const QString file = dir.filePath("aenderungen.zae");
    std::unique_ptr<Database> other = std::make_unique<Database>(otherPath);
    const Times exported = medianms(runs, [&] {
        const ChangeFileRead made = changesagainst(*other, db.path(), QStringLiteral("Messung"));
        check(made.result);
        check(writechangefile(file, made.file));
    });
    other.reset();
    print("export --against (diff, summary, fingerprint, file)", exported);
    const Times fingerprint = medianms(runs, [&] { worldfingerprint(db); });
    print("(of which the fingerprint of the world)", fingerprint);
    const Times read = medianms(runs, [&] { check(readchangefile(file).result); });
    print("change file read and checked", read);

    const ChangeFileRead loaded = readchangefile(file);
    const Times preview = medianms(runs, [&] { check(previewchanges(db, loaded.file.changeset).result); });
    print("preview (conflicts, rolled back)", preview);
    const Times applied = medianms(runs, [&] {
        Transaction tx(db);
        const ApplyOutcome done = applychanges(db, loaded.file.changeset, {});
        check(done.result);
        if (done.applied == 0)
            std::exit(1);
    });
    print("apply alone (rolled back)", applied);
    std::vector<double> steps, cpus;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        const double cpu = cpunow();
        check(applychangefile(*world, file, loaded.file, {}).result);
        cpus.push_back(cpunow() - cpu);
        steps.push_back(double(timer.nsecsElapsed()) / 1e6);
        check(world->undo());
    }
    std::sort(steps.begin(), steps.end());
    std::sort(cpus.begin(), cpus.end());
    print("apply as one step after a restore point", {steps[steps.size() / 2], cpus[cpus.size() / 2]});

    // The same changes as a step of the history, exported from there.
    check(applychangefile(*world, file, loaded.file, {}).result);
    const qint64 step = world->history().last().id;
    const QString since = dir.filePath("seit.zae");
    const Times fromsteps = medianms(runs, [&] {
        const ChangeFileRead made = changessince(db, step, QStringLiteral("Messung"));
        check(made.result);
        check(writechangefile(since, made.file));
    });
    print("export --since (steps combined, summary, fingerprint, file)", fromsteps);
    return 0;
}
