// The Anstoss import: a country file of 50 clubs with 25 players each into
// the free players, in one run; and the workbench's work without its window:
// filling the lists from a club file and the club, the automatic choice and
// the save of the 20 players. Reports the median of the runs.
// Usage: bench-anstoss [runs]
#include "anstoss/aetfile.h"
#include "anstoss/importsave.h"
#include "anstoss/league.h"
#include "anstoss/squadbuilder.h"
#include "core/generator.h"
#include "core/schema.h"
#include "platform/codepage.h"

#include "timing.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

using namespace zorbo;

namespace {

constexpr int clubs = 50;
constexpr int players = 25;

QByteArray clubfile(int club)
{
    QString text = QStringLiteral("[Team]\r\nName=Verein %1 Süd\r\nStadt=Stadt %1\r\nLand=Deutschland\r\n"
                                  "Spieler=%2\r\ntrikoth0=255, 0, 0\r\n")
                       .arg(club)
                       .arg(players);
    for (int i = 0; i < players; ++i)
        text += QStringLiteral("[Spieler%1]\r\nName=Müller %2\r\nVorname=Jörg\r\nPosition=%3\r\nStaerke=%4\r\n"
                               "Land=Deutschland\r\nRestspiele=10\r\nRueckennummer=%1\r\nHautfarbe=%5\r\nHaarfarbe=3\r\n")
                    .arg(i + 1)
                    .arg(club * 100 + i)
                    .arg(i < 3 ? 0 : 1 + i % 3)
                    .arg(1000 * (i % 12))
                    .arg(i % 5 == 0 ? 1 : 0);
    return *toCp1252(text);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    QTemporaryDir dir;
    QDir().mkpath(dir.filePath("Deutschland/Liga 1"));
    QDir().mkpath(dir.filePath("Deutschland/Liga 2"));
    QByteArray lan = "[Land]\r\nLand=Deutschland\r\n";
    for (int league = 1; league <= 2; ++league) {
        lan += "[Liga " + QByteArray::number(league) + "]\r\n";
        for (int c = 0; c < clubs / 2; ++c) {
            const int club = (league - 1) * (clubs / 2) + c;
            lan += "v" + QByteArray::number(c) + "=Verein" + QByteArray::number(club) + "\r\n";
            QFile f(dir.filePath(QStringLiteral("Deutschland/Liga %1/Verein%2.aet").arg(league).arg(club)));
            if (!f.open(QIODevice::WriteOnly) || f.write(clubfile(club)) < 0)
                return 1;
        }
    }
    QFile lanfile(dir.filePath("deutschland.lan"));
    if (!lanfile.open(QIODevice::WriteOnly) || lanfile.write(lan) < 0)
        return 1;
    lanfile.close();

    OpenedDb opened = opendb(dir.filePath("zorbo.mdb"));
    Database &db = *opened.db;
    db.run("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (7, 'Altverein', 'Deutschland')");
    spieler20new(db, 7, "Deutschland", 20);

    int added = 0;
    const double league = bench::medianms(runs, [&] {
        db.exec("DELETE FROM a4spieler");
        const AnstossResult r = importleague(db, lanfile.fileName());
        added = r.players;
    });
    std::printf("league run, %d clubs x %d players into the free players: %.1f ms (%d players)\n", clubs, players, league,
                added);

    AetFile file;
    if (!file.load(dir.filePath("Deutschland/Liga 1/Verein0.aet")))
        return 1;
    const double fill = bench::medianms(runs, [&] {
        SquadBuilder builder;
        builder.fill(db, file, 7);
        builder.autochoose(0);
    });
    std::printf("workbench lists filled and chosen: %.2f ms\n", fill);
    const double save = bench::medianms(runs, [&] {
        SquadBuilder builder;
        builder.fill(db, file, 7);
        builder.autochoose(0);
        saveimportplayers(db, file, 7, builder.entries());
    });
    std::printf("workbench fill plus player save: %.2f ms\n", save);
    return 0;
}
