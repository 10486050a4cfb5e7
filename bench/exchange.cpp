// Import and export of a whole world through the game's configuration files:
// 250 national teams, 5,000 clubs and 100,000 players. Reports the median of
// the runs for each operation, and beside it the time the sqlite3 shell needs
// to load the same player rows from CSV inside one transaction.
// Usage: bench-exchange [runs [folder]]   (sqlite3 must be on the PATH)
// With a folder, the world and its two files are left there, to compare
// the files other builds write from the same world.
#include "core/schema.h"
#include "core/world.h"
#include "exchange/formats.h"
#include "exchange/configruns.h"
#include "exchange/playerconfig.h"
#include "exchange/teamconfigwriter.h"
#include "core/fileformat.h"

#include "timing.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace zorbo;
using zorbo::bench::check;

namespace {

constexpr int nationalTeams = 250;
constexpr int clubs = 5000;
constexpr int squad = 20;

void generate(Database &db)
{
    Transaction tx(db);
    db.exec("DELETE FROM vereine; DELETE FROM vereine_national; DELETE FROM spieler; DELETE FROM kaderzeilen");
    db.exec("INSERT INTO vereine (NUMMER, NAME, GRAFIK_NR, SPIELER) VALUES (0, 'TRANSFERMARKT', 999, '')");
    Statement nat = db.prepare("INSERT INTO vereine_national VALUES (?1, ?2, ?2, 292, 0, 0, '', ?2, ?2, '99,121,700', ?2, "
                               "'West-Europa', 8000, 3000, 16, 62, 58, 0, '144, 32, 56', '120,  8, 24', ' 48, 40,120', "
                               "'  0,  0,  0', '  8, 64,200', '  0, 40,160', ' 24, 24, 24', '  0,  0,  0', '240,184, 32', "
                               "'200,144,  8', ' 24, 24, 24', '  0,  0,  0', '', '')");
    for (int n = 1; n <= nationalTeams; ++n)
        nat.bindAll(n, QStringLiteral("Land %1 Großmünster").arg(n)).exec();
    Statement club = db.prepare("INSERT INTO vereine VALUES (?1, ?2, ?3, ?4, ?5, 3, '', 'Waldstadion', 'Musterstadt', ?6, "
                                "12000, 8000, 3, 70, 10, 0, '255,255,255', '255,255,255', '255,255,255', '255,255,255', "
                                "' 48, 48, 48', ' 48, 48, 48', ' 48, 48, 48', ' 48, 48, 48', ' 24,181,220', ' 24,181,220', "
                                "' 24,181,220', ' 24,181,220')");
    Statement player = db.prepare("INSERT INTO spieler VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, 100, ?9, 0, ?10, ?11, 1, 3, ?12, '')");
    Statement member = db.prepare("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)");
    qint64 p = 1;
    for (int c = 0; c < clubs; ++c) {
        const int number = nationalTeams + 1 + c;
        const QString country = QStringLiteral("Land %1 Großmünster").arg(c % nationalTeams + 1);
        club.bindAll(number, QStringLiteral("FC Müßiggang %1").arg(number), QStringLiteral("Müßig %1").arg(number), c % 1000,
                     double(c % 13) / 2, country)
            .exec();
        for (int i = 0; i < squad; ++i, ++p) {
            player.bindAll(p, QStringLiteral("Schröder-%1").arg(p), QStringLiteral("Jürgen"), int(p % 13) * 1000,
                           std::min(int(p % 13) * 1000 + 1000, 12000), country, 170 + int(p % 30), i * 4 / squad, (p % 4) * 0.5, i + 1,
                           int(p % 100000), p % 5 ? QString() : QStringLiteral("3,17,42"))
                .exec();
            member.bindAll(number, p).exec();
            if (i < 2) // each club gives two players to its national team
                member.bindAll(c % nationalTeams + 1, p).exec();
        }
    }
    tx.commit();
}


QString csvField(const QVariant &v)
{
    if (v.isNull())
        return {};
    if (v.typeId() == QMetaType::QString)
        return QLatin1Char('"') + v.toString().replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
    return v.toString();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    QTemporaryDir dir;
    OpenedDb opened = opendb(dir.filePath("zorbo.mdb"));
    Database &db = *opened.db;
    generate(db);
    const QString tm = dir.filePath("1_tm.cfg");
    const QString sp = dir.filePath("1_sp.cfg");
    check(exportvereine(db, tm));
    check(exportspieler(db, sp));

    const double exportTeams = zorbo::bench::medianms(runs, [&] { check(exportvereine(db, tm)); });
    const double exportPlayers = zorbo::bench::medianms(runs, [&] { check(exportspieler(db, sp)); });
    const double importTeams = zorbo::bench::medianms(runs, [&] { check(importteamsrun(db, tm)); });
    const double importPlayers = zorbo::bench::medianms(runs, [&] { check(importplayersrun(db, sp)); });

    // The same player rows as CSV, loaded by the sqlite3 shell into the same
    // strict table of a fresh database, in one transaction.
    QFile csv(dir.filePath("spieler.csv"));
    csv.open(QIODevice::WriteOnly);
    {
        Statement st = db.prepare("SELECT * FROM spieler ORDER BY NUMMER");
        QByteArray out;
        while (st.step()) {
            QStringList row;
            for (int c = 0; c < st.columnCount(); ++c)
                row << csvField(st.value(c));
            out += row.join(QLatin1Char(',')).toUtf8() + '\n';
        }
        csv.write(out);
        csv.close();
    }
    const QString schema = QStringLiteral(
        "CREATE TABLE spieler (NUMMER INTEGER PRIMARY KEY, NAME TEXT, VORNAME TEXT, \"Stärke\" INTEGER, \"Max_Stärke\" INTEGER, "
        "NATION TEXT, GROESSE INTEGER, ART INTEGER, \"REST_EINSÄTZE\" INTEGER, LIEBLINGSPOS_X REAL, LIEBLINGSPOS_Y REAL, "
        "RUECKENNUMMER INTEGER, GESICHT INTEGER, HAUTFARBE INTEGER, HAARFARBE INTEGER, ERLERNT TEXT, GESPERRT TEXT) STRICT;");
    int round = 0;
    const double shell = zorbo::bench::medianms(runs,
        [&] {
            const QString target = dir.filePath(QStringLiteral("shell%1.db").arg(round++));
            QProcess p;
            p.start("sqlite3", {target});
            p.waitForStarted();
            p.write((schema + "\n.mode csv\nBEGIN;\n.import '" + csv.fileName() + "' spieler\nCOMMIT;\n").toUtf8());
            p.closeWriteChannel();
            p.waitForFinished(120000);
            if (p.exitCode() != 0) {
                std::fprintf(stderr, "sqlite3: %s\n", p.readAllStandardError().constData());
                std::exit(1);
            }
        });
    const qint64 rows = db.scalar("SELECT count(*) FROM spieler").toLongLong();

    // The whole world read through the menu's path into a new program
    // folder: history and restore points on, every row a change, and each
    // file remembered for the question before it is overwritten.
    const double menu = zorbo::bench::medianof(runs, [&] {
        QTemporaryDir folder;
        const std::unique_ptr<World> world = openworld(folder.path());
        QElapsedTimer timer;
        timer.start();
        for (const auto &[key, path] : {std::pair{QStringLiteral("vereine"), tm}, std::pair{QStringLiteral("spieler"), sp}})
            check(runformat(*exchangeformat(key), true, FormatPlace{world->settings(), world.get()},
                            FormatRequest{.path = path}, {}));
        return double(timer.nsecsElapsed()) / 1e6;
    });

    std::printf("world: %d national teams, %d clubs, %lld players; 1_tm.cfg %.1f MB, 1_sp.cfg %.1f MB; median of %d runs\n",
                nationalTeams, clubs + 1, rows, QFileInfo(tm).size() / 1e6, QFileInfo(sp).size() / 1e6, runs);
    std::printf("import teams   %8.1f ms\nimport players %8.1f ms\nexport teams   %8.1f ms\nexport players %8.1f ms\n",
                importTeams, importPlayers, exportTeams, exportPlayers);
    std::printf("sqlite3 shell, same player rows from CSV in one transaction %8.1f ms (process start included)\n", shell);
    std::printf("player import / sqlite3 load %.2f; whole-world import %.1f ms; whole-world export %.1f ms\n",
                importPlayers / shell, importTeams + importPlayers, exportTeams + exportPlayers);
    std::printf("whole-world import through the menu into a new world (history and restore points on) %8.1f ms\n", menu);
    if (argc > 2) {
        const QString keep = QString::fromLocal8Bit(argv[2]) + QLatin1Char('/');
        db.prepare("VACUUM INTO ?1").bindAll(keep + "zorbo.mdb").exec();
        QFile::copy(tm, keep + "1_tm.cfg");
        QFile::copy(sp, keep + "1_sp.cfg");
    }
    return 0;
}
