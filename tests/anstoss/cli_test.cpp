#include "platform/codepage.h"
#include "support/cli.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

const QString sample = QStringLiteral(ZORBO_EXAMPLES "/anstoss");

// A world with the competition template's clubs of 20 players each; the first club's number.
QString templateworld(const TempFolder &dir)
{
    EXPECT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    EXPECT_EQ(runCli({"--dir", dir.path(), "template"}).exitCode, 0);
    const OpenedDb opened = opendb(dir.file("zorbo.mdb"));
    return opened.db->scalar("SELECT min(NUMMER) FROM vereine WHERE NUMMER > 0").toString();
}

QStringList dumpof(const TempFolder &dir)
{
    const OpenedDb opened = opendb(dir.file("zorbo.mdb"));
    return dumpworld(*opened.db);
}

} // namespace

TEST(AnstossCli, LeagueAndClubIntoTheFreePlayers)
{
    TempFolder dir;
    ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    const CliRun league = runCli({"--dir", dir.path(), "import-league", sample + "/deutschland.lan", "--free"});
    ASSERT_EQ(league.exitCode, 0) << league.err.toStdString();
    // Ten clubs, the one stored at both places twice: its second reading lands nothing.
    // The phantom line of each league is told.
    EXPECT_TRUE(league.out.contains("10 Vereine mit 238 Spielern") && league.out.contains("23 Spieler standen schon"))
        << league.out.toStdString();
    EXPECT_EQ(league.out.count("Nicht gefunden:"), 2);

    const CliRun club = runCli({"--dir", dir.path(), "import-aet",
                                sample + "/Deutschland/Regionalliga/SC_Moorbach.aet", "--free"});
    ASSERT_EQ(club.exitCode, 0) << club.err.toStdString();
    EXPECT_TRUE(club.out.contains("0 Spieler in Freie Spieler importiert! 23 Spieler standen schon"))
        << club.out.toStdString();
}

TEST(AnstossCli, ClubWithSquadIsTheSameInEveryFreshProcessAndBadListsChangeNothing)
{
    TempFolder a, b;
    const QString club = templateworld(a);
    templateworld(b);
    const QString file = sample + "/Deutschland/Bundesliga/VfL_Koenigsau.aet";
    for (const TempFolder *dir : {&a, &b}) {
        const CliRun r = runCli({"--dir", dir->path(), "import-aet", file, "--club", club, "--team", "--kits",
                                 "--squad", "auto"});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
        EXPECT_TRUE(r.out.contains("20 Spieler gespeichert."));
    }
    EXPECT_EQ(dumpof(a), dumpof(b));
    const OpenedDb opened = opendb(a.file("zorbo.mdb"));
    EXPECT_EQ(opened.db->scalar("SELECT NAME FROM vereine WHERE NUMMER = ?1", club).toString(), "VfL Königsau");

    const QStringList before = dumpof(a);
    QStringList list;
    for (int i = 0; i < 19; ++i)
        list << QStringLiteral("I%1").arg(i);
    CliRun r = runCli({"--dir", a.path(), "import-aet", file, "--club", club, "--squad", list.join(',')});
    EXPECT_NE(r.exitCode, 0);
    EXPECT_TRUE(r.err.contains("19 statt 20")) << r.err.toStdString();
    r = runCli({"--dir", a.path(), "import-aet", file, "--club", club, "--team", "--squad", list.join(',') + ",I0"});
    EXPECT_NE(r.exitCode, 0);
    EXPECT_TRUE(r.err.contains("zweimal")) << r.err.toStdString();
    EXPECT_EQ(dumpof(a), before);

    // A list mixing the file's and the club's players, saved in position order.
    const QString keeper =
        opened.db->scalar("SELECT min(spieler) FROM vereinspieler WHERE verein = ?1", club).toString();
    list.removeLast();
    list.prepend("E" + keeper);
    list << "I22";
    r = runCli({"--dir", a.path(), "import-aet", file, "--club", club, "--squad", list.join(',')});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(opened.db->scalar("SELECT count(*) FROM spielerinvereine WHERE verein = ?1 AND art = 0", club).toInt(), 4);
}

// Files that are no exporter files and UTF-8 files: each is an error naming
// the file, and nothing changes; Qt's own words never show. (What each reader
// refuses, and why, is the reading test's.)
TEST(AnstossCli, RefusedFilesAreErrorsNamingTheFileAndUtf8IsReadWhenAsked)
{
    TempFolder dir;
    const QString club = templateworld(dir);
    const QStringList before = dumpof(dir);
    const auto write = [&](const char *name, const QByteArray &bytes) {
        writeBytes(dir.file(name), bytes);
        return dir.file(name);
    };
    QByteArray garbage;
    for (int i = 0; i < 4000; ++i)
        garbage += char(1 + (i * 7919) % 250);
    const struct {
        QStringList args;
        QString word;
    } cases[] = {
        {{"import-aet", "/etc/passwd", "--free"}, "/etc/passwd"},
        {{"import-league", write("wirr.lan", garbage + "\n[Liga]\n1=x\n"), "--free"}, dir.file("wirr.lan")},
        {{"import-aet", write("ohnesitz.aet", "[Team]\r\nName=X\r\nStadionsteh=5\r\n"), "--club", club, "--stadium"},
         "Stadionsitz"},
        {{"import-aet", write("utf8.aet", QStringLiteral("[Team]\r\nName=Düren\r\nLand=Deutschland\r\nSpieler=0\r\n").toUtf8()), "--free"},
         "--utf8"},
    };
    for (const auto &c : cases) {
        const CliRun r = runCli(QStringList{"--dir", dir.path()} + c.args);
        EXPECT_EQ(r.exitCode, 1) << c.args.join(' ').toStdString();
        EXPECT_TRUE(r.err.startsWith("Fehler: ") && r.err.endsWith('\n') && r.err.contains(c.word)) << r.err.toStdString();
        EXPECT_FALSE(r.err.contains("Broken") || r.err.contains("Sitzplätze") || r.out.contains("Nicht gefunden"))
            << r.err.toStdString() << r.out.toStdString();
    }
    EXPECT_EQ(dumpof(dir), before);

    const CliRun utf8 = runCli({"--dir", dir.path(), "import-aet", dir.file("utf8.aet"), "--club", club, "--team", "--utf8"});
    ASSERT_EQ(utf8.exitCode, 0) << utf8.err.toStdString();
    EXPECT_EQ(opendb(dir.file("zorbo.mdb")).db->scalar("SELECT NAME FROM vereine WHERE NUMMER = ?1", club).toString(), "Düren");
}

// A club brought in through the command line with values the windows can't
// show: the check lists them, and the world's export reads back unchanged.
TEST(AnstossCli, ValuesBeyondTheWindowsAreListedAndTheExportReadsBackEqual)
{
    TempFolder a, b;
    const QString club = templateworld(a);
    ASSERT_EQ(runCli({"--dir", b.path(), "init"}).exitCode, 0);
    QString text = QStringLiteral("[Team]\r\nName=Sportgemeinschaft Bärenstadt-Weißach 1899!\r\nLand=Deutschland\r\nSpieler=20\r\n");
    for (int i = 1; i <= 20; ++i)
        text += QStringLiteral("[Spieler%1]\r\nName=S%1\r\nVorname=V\r\nPosition=%2\r\nStaerke=%3\r\nLand=Deutschland\r\n"
                               "Restspiele=10\r\nRueckennummer=%1\r\nHautfarbe=0\r\nHaarfarbe=3\r\n")
                    .arg(i)
                    .arg(i == 1 ? 0 : 1 + i % 3)
                    .arg(i == 1 ? 12500 : 6000);
    writeBytes(a.file("weit.aet"), *toCp1252(text));
    QStringList all;
    for (int i = 0; i < 20; ++i)
        all << QStringLiteral("I%1").arg(i);
    CliRun r = runCli({"--dir", a.path(), "import-aet", a.file("weit.aet"), "--club", club, "--team", "--squad", all.join(',')});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("1 Wert außerhalb der Fensterbereiche behalten, siehe Probleme")) << r.out.toStdString();
    r = runCli({"--dir", a.path(), "check"});
    EXPECT_TRUE(r.out.contains("Warnung: Werte außerhalb der Fensterbereiche:")) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("Team %1, Feld NAME: Verein „Sportgemeinschaft Bärenstadt-Weißach 1899!“").arg(club)))
        << r.out.toStdString();
    EXPECT_TRUE(r.out.contains("Feld STÄRKE: Spieler „V. S1“: 12500; die Fenster zeigen 0 bis 12000")) << r.out.toStdString();

    for (const char *kind : {"teams", "players"}) {
        const QString file = a.file(QStringLiteral("%1.cfg").arg(kind));
        ASSERT_EQ(runCli({"--dir", a.path(), QStringLiteral("export-%1").arg(kind), file}).exitCode, 0);
        r = runCli({"--dir", b.path(), QStringLiteral("import-%1").arg(kind), file});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
        EXPECT_TRUE(r.out.contains("außerhalb der Fensterbereiche behalten")) << r.out.toStdString();
    }
    const QStringList tables{"vereine", "vereine_national", "spieler", "vereinspieler"};
    const OpenedDb left = opendb(a.file("zorbo.mdb"));
    const OpenedDb right = opendb(b.file("zorbo.mdb"));
    EXPECT_EQ(dumpworld(*right.db, tables, true), dumpworld(*left.db, tables, true));
}
