// The transfer market and the data care tools on a world of 5,000 clubs and
// 100,000 players: the market fill (1,700 slots, 5,000 free players), a swap
// of each kind, the squad number and club name searches, and the compaction
// after a tenth of the players were deleted. Reports the median of the runs.
// Usage: bench-tools [runs]
#include "core/world.h"
#include "tools/clubnames.h"
#include "tools/dbcare.h"
#include "tools/marketfill.h"
#include "tools/squadnumbers.h"
#include "tools/swap.h"

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
constexpr int freeplayers = 5000;
constexpr qint64 firstPlayer = 10000;

void generate(Database &db)
{
    Transaction tx(db);
    db.exec("INSERT INTO vereine_national (NUMMER, NAME, NATION) VALUES (1, 'Deutschland', 'Deutschland')");
    Statement club = db.prepare("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (?1, ?2, 'Deutschland')");
    Statement player = db.prepare("INSERT INTO spieler VALUES (?1, ?2, 'J.', ?3, ?4, 'Deutschland', 180, ?5, 100, 0, 0, ?6, "
                                  "12345, 1, 3, '', '')");
    Statement member = db.prepare("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)");
    qint64 p = firstPlayer;
    for (int c = 0; c < clubs; ++c) {
        const int number = 2 + c;
        // Every tenth club has a name too long for the game, every seventh a repeated squad number.
        club.bindAll(number, c % 10 ? QStringLiteral("FC %1").arg(number) : QStringLiteral("Fußballclub Müßiggang %1").arg(number))
            .exec();
        for (int i = 0; i < squad; ++i, ++p) {
            player.bindAll(p, QStringLiteral("Schröder-%1").arg(p), int(p % 13) * 1000, int(p % 13) * 1000 + 1000,
                           i * 4 / squad, (c % 7 == 0 && i == 1) ? 1 : i + 1)
                .exec();
            member.bindAll(number, p).exec();
        }
    }
    Statement free = db.prepare("INSERT INTO a4spieler (name, vorname, land, verein, position, staerke, restspiele, "
                                "rueckennummer, gesicht, hautfarbe, haarfarbe) VALUES (?1, 'Jürgen', ?2, ?3, ?4, ?5, 20, 7, "
                                "12345, 1, 3)");
    for (int i = 0; i < freeplayers; ++i)
        free.bindAll(QStringLiteral("Frei-%1").arg(i), QStringLiteral("Land %1").arg(i % 60),
                     QStringLiteral("Export %1").arg(i % 250), i % 4, (i % 25) * 500)
            .exec();
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
    generate(*world->db());
    Database &db = *world->db();
    std::printf("world: %lld players, %lld free players, %d runs each\n",
                db.scalar("SELECT count(*) FROM spieler").toLongLong(),
                db.scalar("SELECT count(*) FROM a4spieler").toLongLong(), runs);

    std::printf("market fill (1,700 slots)  %8.1f ms\n", bench::medianms(runs, [&] {
                    check(world->run([](Database &d) { return spielera4_nach_tmarkt(d); }).result);
                }));
    // Two players of clubs 2 and 3 change clubs, and change back in the next run.
    bool back = false;
    std::printf("swap between clubs         %8.1f ms\n", bench::medianms(runs, [&] {
                    const qint64 a = firstPlayer;
                    const qint64 b = firstPlayer + squad;
                    check(world->run([&](Database &d) { return back ? swapplayers(d, a, b, 3, 2) : swapplayers(d, a, b, 2, 3); }));
                    back = !back;
                }));
    qint64 slot = firstPlayer + 100;
    std::printf("swap with a free player    %8.1f ms\n", bench::medianms(runs, [&] {
                    const qint64 id = db.scalar("SELECT min(id) FROM a4spieler").toLongLong();
                    check(world->run([&](Database &d) { return swapfree(d, id, slot++); }));
                }));
    qsizetype found = 0;
    std::printf("squad number search        %8.1f ms\n", bench::medianms(runs, [&] { found = clubswithrepeats(db).size(); }));
    std::printf("  (%lld clubs)\n", qint64(found));
    std::printf("club name search           %8.1f ms\n", bench::medianms(runs, [&] { found = longclubnames(db).size(); }));
    std::printf("  (%lld clubs)\n", qint64(found));

    db.exec("DELETE FROM spieler WHERE NUMMER % 10 = 0");
    const qint64 before = QFileInfo(db.path()).size();
    std::printf("compaction                 %8.1f ms\n", bench::medianms(runs, [&] { check(comp_db(*world)); }));
    std::printf("  (%lld KB before, %lld KB after)\n", before / 1024, QFileInfo(world->db()->path()).size() / 1024);
    return 0;
}
