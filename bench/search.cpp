// The search and the problem check on a world of 250 national teams, 5,000
// clubs and 100,000 players: the search per keystroke of a name typed
// letter by letter, the index build, the whole-world import with and
// without the index following it, the full check. Beside the trigram index
// the search uses, the same names in an FTS5 table with the unicode61
// tokenizer (remove_diacritics 2), which finds word beginnings only.
// Usage: bench-search [runs]
#include "core/problems.h"
#include "core/search.h"
#include "exchange/configruns.h"
#include "exchange/playerconfig.h"
#include "exchange/teamconfigwriter.h"

#include "timing.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

using namespace zorbo;
using zorbo::bench::check;

namespace {

constexpr int nationalTeams = 250;
constexpr int clubs = 5000;
constexpr int squad = 20;

const char *const firstNames[] = {"Jürgen", "Stefan", "Štefan", "Lukas", "Björn", "Ömer", "Kai", "Miloš", "Zoë", "Tomáš"};
const char *const surnames[] = {"Müller", "Schröder", "Weiß", "Straßer", "Köhler", "Großmann", "Nowak", "Šimek",
                                "Kovács", "Fuß", "Jäger", "Bäcker", "Lindqvist", "Øberg", "Nuñez", "Smith"};

void generate(Database &db)
{
    Transaction tx(db);
    db.exec("DELETE FROM vereine WHERE NUMMER <> 0; DELETE FROM vereine_national; DELETE FROM spieler; "
            "DELETE FROM kaderzeilen");
    Statement nat = db.prepare("INSERT INTO vereine_national VALUES (?1, ?2, ?2, 5, 0, 0, '', ?2, ?2, '99,121,700', ?2, "
                               "'West-Europa', 8000, 3000, 16, 62, 58, 0, '144, 32, 56', '120,  8, 24', ' 48, 40,120', "
                               "'  0,  0,  0', '  8, 64,200', '  0, 40,160', ' 24, 24, 24', '  0,  0,  0', '240,184, 32', "
                               "'200,144,  8', ' 24, 24, 24', '  0,  0,  0', '', '')");
    for (int n = 1; n <= nationalTeams; ++n)
        nat.bindAll(n, QStringLiteral("Land %1 Großmünster").arg(n)).exec();
    Statement club = db.prepare("INSERT INTO vereine VALUES (?1, ?2, 'Müßig', 5, 0, 3, '', 'Waldstadion', 'Musterstadt', ?3, "
                                "12000, 8000, 3, 70, 10, 0, '255,255,255', '255,255,255', '255,255,255', '255,255,255', "
                                "' 48, 48, 48', ' 48, 48, 48', ' 48, 48, 48', ' 48, 48, 48', ' 24,181,220', ' 24,181,220', "
                                "' 24,181,220', ' 24,181,220')");
    Statement player = db.prepare("INSERT INTO spieler VALUES (?1, ?2, ?3, 4000, 6000, 'Land 1 Großmünster', 180, ?4, 100, 0, 0, "
                                  "?5, 0, 1, 3, '3,17', '')");
    Statement member = db.prepare("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)");
    qint64 p = 1;
    for (int c = 0; c < clubs; ++c) {
        const int number = nationalTeams + 1 + c;
        club.bindAll(number, QStringLiteral("FC Müßiggang %1").arg(number), QStringLiteral("Land %1 Großmünster").arg(c % nationalTeams + 1))
            .exec();
        for (int i = 0; i < squad; ++i, ++p) {
            const QString name = QString::fromUtf8(surnames[p % 16]) + QLatin1Char('-') + QString::number(p);
            player.bindAll(p, name, QString::fromUtf8(firstNames[p % 10]).left(1) + QLatin1Char('.'), i * 4 / squad, i + 1).exec();
            member.bindAll(number, p).exec();
        }
    }
    tx.commit();
}


// The median of the keystrokes' medians, and the slowest of them.
void typing(const char *label, int runs, const QStringList &prefixes, const std::function<void(const QString &)> &find)
{
    double worst = 0, sum = 0;
    for (const QString &prefix : prefixes) {
        const double ms = zorbo::bench::medianms(runs, [&] { find(prefix); });
        worst = std::max(worst, ms);
        sum += ms;
    }
    std::printf("%-34s mean %6.2f ms, slowest %6.2f ms per keystroke\n", label, sum / prefixes.size(), worst);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    QTemporaryDir dir;
    const std::unique_ptr<World> world = openworld(dir.path());
    Database &db = *world->db();
    generate(db);

    const QString tm = dir.filePath("1_tm.cfg"), sp = dir.filePath("1_sp.cfg");
    check(exportvereine(db, tm));
    check(exportspieler(db, sp));
    const auto importWorld = [&] {
        check(world->run([&](Database &d) { return importteamsrun(d, tm); }));
        check(world->run([&](Database &d) { return importplayersrun(d, sp); }));
    };
    const double importPlain = zorbo::bench::medianms(runs, importWorld);

    SearchIndex *index = &SearchIndex::of(*world);
    std::vector<double> firstSearchMs;
    const double build = zorbo::bench::medianms(runs, [&] { index->rebuild(); });
    const double importIndexed = zorbo::bench::medianms(runs, importWorld);
    // The first search after an import builds what the import left out of date.
    const double firstSearch = zorbo::bench::medianms(runs, [&] {
        importWorld();
        QElapsedTimer t;
        t.start();
        index->find(QStringLiteral("mü"));
        firstSearchMs.push_back(double(t.nsecsElapsed()) / 1e6);
    });
    Q_UNUSED(firstSearch);
    std::sort(firstSearchMs.begin(), firstSearchMs.end());

    std::printf("world: %d national teams, %d clubs, %d players; median of %d runs\n", nationalTeams, clubs,
                clubs * squad, runs);
    std::printf("index build                         %8.1f ms\n", build);
    std::printf("whole-world import without index    %8.1f ms\n", importPlain);
    std::printf("whole-world import with index       %8.1f ms (+%.0f%%)\n", importIndexed,
                (importIndexed / importPlain - 1) * 100);
    std::printf("first search after the import       %8.1f ms\n", firstSearchMs[firstSearchMs.size() / 2]);

    const QStringList typed = {"m", "mü", "mül", "müll", "mülle", "müller", "müller-4", "müller-42"};
    typing("trigram, typing \"müller-42\"", runs, typed, [&](const QString &t) { index->find(t); });
    typing("trigram, typing \"zzq\" (no hit)", runs, {"z", "zz", "zzq"}, [&](const QString &t) { index->find(t); });
    typing("trigram, \"#54321\"", runs, {"#54321"}, [&](const QString &t) { index->find(t); });

    // The other candidate: word beginnings through unicode61.
    const double otherBuild = zorbo::bench::medianms(runs, [&] {
        Transaction tx(db);
        db.exec("DROP TABLE IF EXISTS temp.probe; CREATE VIRTUAL TABLE temp.probe USING fts5(text, tokenize = 'unicode61 remove_diacritics 2')");
        Statement put = db.prepare("INSERT INTO temp.probe (rowid, text) VALUES (?1, ?2)");
        Statement players = db.prepare("SELECT NUMMER, VORNAME, NAME FROM spieler");
        while (players.step())
            put.bindAll(players.integer(0), searchfold(players.text(1) + QLatin1Char(' ') + players.text(2))).exec();
        tx.commit();
    });
    std::printf("unicode61 build (players only)      %8.1f ms\n", otherBuild);
    Statement probe = db.prepare("SELECT NUMMER, NAME FROM spieler WHERE NUMMER IN "
                                 "(SELECT rowid FROM temp.probe WHERE text MATCH ?1 LIMIT 50) ORDER BY NAME COLLATE deutsch");
    typing("unicode61, typing \"müller-42\"", runs, typed, [&](const QString &t) {
        probe.bind(1, QLatin1Char('"') + searchfold(t) + QStringLiteral("\"*"));
        while (probe.step()) {
        }
        probe.reset();
    });

    const double checked = zorbo::bench::medianms(runs, [&] {
        const ProblemReport r = world->run([&](Database &d) { return checkproblems(d, world->settings()); });
        if (!r.result.ok)
            std::exit(1);
    });
    // The phases of one check, as its progress tells them.
    QElapsedTimer phase;
    std::vector<double> phases;
    phase.start();
    const ProblemReport r = world->run([&](Database &d) {
        return checkproblems(d, world->settings(), [&](qint64, qint64) {
            phases.push_back(double(phase.nsecsElapsed()) / 1e6);
            return true;
        });
    });
    std::printf("full problem check                  %8.1f ms (%d problems, %d warnings)\n", checked, r.errors(), r.warnings());
    if (phases.size() == 5)
        std::printf("  team rows %.1f ms, player rows %.1f ms, squads %.1f ms, placing and sorting %.1f ms\n",
                    phases[1] - phases[0], phases[2] - phases[1], phases[3] - phases[2], phases[4] - phases[3]);
    return 0;
}
