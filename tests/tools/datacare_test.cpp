#include "core/gamedb.h"
#include "tools/clubnames.h"
#include "tools/dbcare.h"
#include "tools/squadnumbers.h"
#include "toolsworld.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

QStringList texts(const QList<SquadLine> &lines)
{
    QStringList t;
    for (const SquadLine &l : lines)
        t << l.text();
    return t;
}

} // namespace

TEST(SquadNumbers, RepeatsAreMarkedAndTheSearchSkipsTheMarket)
{
    ToolsWorld w;
    w.club(1, "Deutschland", true);
    w.club(10, "FC Sieben");
    w.club(20, "SV Null");
    w.club(30, "Ohne Fehler");
    w.player(100, 10, "Erster", "E.", 7);
    w.player(101, 10, "Zweiter", "Z.", 7);
    w.player(102, 10, "Dritter", "D.", 7);
    w.player(103, 10, "Vierter", "V.", 9);
    w.player(200, 20, "Nuller", "N.", 0);
    w.player(201, 20, "Eins", "E.", 1);
    w.player(300, 30, "Einzeln", "E.", 1);
    w.member(1, 100);
    w.member(1, 200); // 7 and 0 in the national team: no repeat there
    w.player(400, 1, "Doppel", "A.", 5);
    w.player(401, 1, "Doppel", "B.", 5);

    const QList<NamedTeam> found = clubswithrepeats(w.db());
    ASSERT_EQ(found.size(), 2) << "the market's generated numbers repeat too, but it is never reported";
    EXPECT_EQ(found[0].nummer, 1);
    EXPECT_EQ(found[0].name, "Deutschland") << "national teams are found in their own table";
    EXPECT_EQ(found[1].name, "FC Sieben");

    EXPECT_EQ(texts(squadlines(w.db(), 10)),
              (QStringList{"7 Erster, E.", "*7 Zweiter, Z.", "*7 Dritter, D.", "9 Vierter, V."}));
    const QList<SquadLine> zero = squadlines(w.db(), 20);
    EXPECT_EQ(texts(zero), (QStringList{"*0 Nuller, N.", "1 Eins, E."})) << "the first line is compared with 0";
    EXPECT_TRUE(repeatshown(zero));
    EXPECT_FALSE(repeatshown(squadlines(w.db(), 30)));
}

TEST(SquadNumbers, ARepeatBeyondTheTwentiethLineIsNotShownAndZeroIsNotSaved)
{
    ToolsWorld w;
    w.club(10, "FC Lang");
    for (int i = 1; i <= 21; ++i)
        w.player(100 + i, 10, QStringLiteral("Spieler%1").arg(i), "S.", i);
    w.player(200, 10, "Spät", "S.", 21);
    const QList<SquadLine> lines = squadlines(w.db(), 10);
    ASSERT_EQ(lines.size(), 22);
    EXPECT_TRUE(lines[21].repeat);
    EXPECT_FALSE(repeatshown(lines));
    EXPECT_EQ(clubswithrepeats(w.db()).size(), 1);

    const QStringList before = dumpworld(w.db());
    for (qint64 bad : {0, -3}) {
        const Result r = setsquadnumber(w.db(), 200, bad);
        EXPECT_FALSE(r.ok);
        EXPECT_TRUE(r.message.contains("größer als 0"));
    }
    EXPECT_FALSE(setsquadnumber(w.db(), 999, 4).ok);
    EXPECT_EQ(dumpworld(w.db()), before);
    ASSERT_TRUE(setsquadnumber(w.db(), 200, 22));
    EXPECT_TRUE(clubswithrepeats(w.db()).isEmpty());
}

TEST(ClubNames, ProposalsCutWholeWordsAndKeepShortNames)
{
    // Two blanks in a row make an empty word, which counts as a word; no blank stays at either end of a cut.
    const std::tuple<const char *, NameCut, const char *> cases[] = {
        {"FC Bayern München", NameCut::Whole, "FC Bayern München"}, {"FC Bayern München", NameCut::Left, "Bayern München"},
        {"FC Bayern München", NameCut::Right, "FC Bayern"},        {"Borussia Mönchengladbach", NameCut::Left, "Borussia Mönchengladbach"},
        {"Borussia Mönchengladbach", NameCut::Right, "Borussia Mönchengladbach"}, {"Hertha  Berlin", NameCut::Left, "Berlin"},
        {"Hertha  Berlin", NameCut::Right, "Hertha"},             {"Sport Club Fortuna Köln", NameCut::Left, "Club Fortuna Köln"}};
    for (const auto &[name, cut, expected] : cases)
        EXPECT_EQ(nameproposal(QString::fromUtf8(name), cut), QString::fromUtf8(expected)) << name << int(cut);
}

TEST(ClubNames, OnlyClubsOverFifteenAreFoundAndARenameTakesThemOff)
{
    ToolsWorld w;
    w.club(1, "Ein sehr langes Land", true);
    w.club(10, "Fünfzehn Zeich.");  // 15
    w.club(20, "Sechzehn Zeichen"); // 16
    w.club(30, "Aaa Langer Vereinsname");
    w.club(40, "Zwickauer SV Sachsen");
    w.club(50, "Ötztaler FC Bergland");
    w.club(60, "aab kleiner Vereinsname");
    const QList<NamedTeam> found = longclubnames(w.db());
    QList<qint64> order;
    for (const NamedTeam &t : found)
        order << t.nummer;
    // German order: case doesn't split, Ö stands with O.
    EXPECT_EQ(order, QList<qint64>({30, 60, 50, 20, 40}));

    EXPECT_FALSE(renameclub(w.db(), 20, "").ok);
    EXPECT_FALSE(renameclub(w.db(), 99, "Neu").ok);
    const Result tooWide = renameclub(w.db(), 20, QString(256, QLatin1Char('x')));
    EXPECT_FALSE(tooWide.ok);
    EXPECT_TRUE(tooWide.message.contains("255")) << tooWide.message.toStdString();
    EXPECT_NE(w.value("SELECT length(NAME) FROM vereine WHERE NUMMER = ?1", 20).toInt(), 256);
    const Result tooLong = renameclub(w.db(), 30, "Immer noch zu lang");
    ASSERT_TRUE(tooLong.ok);
    EXPECT_TRUE(tooLong.message.contains("zu lang"));
    ASSERT_TRUE(renameclub(w.db(), 20, "Sechzehn \"Z\""));
    EXPECT_EQ(w.value("SELECT NAME FROM vereine WHERE NUMMER = ?1", 20).toString(), "Sechzehn \"Z\"");
    EXPECT_EQ(longclubnames(w.db()).size(), 4);
}

TEST(DatabaseCare, WipeKeepsReferenceAndFreePlayersAndMakesANewMarket)
{
    ToolsWorld w;
    w.club(1, "Deutschland", true);
    w.club(10, "FC Weg");
    w.player(5000, 10, "Weg");
    w.freeplayer("Frei", "F.", "X", "FC Export");
    const qint64 talents = w.count("SELECT count(*) FROM e_attribute");
    ASSERT_TRUE(del_db(w.db()));
    EXPECT_EQ(w.count("SELECT count(*) FROM vereine_national"), 0);
    EXPECT_EQ(w.count("SELECT group_concat(NUMMER) FROM vereine"), 0);
    EXPECT_EQ(w.count("SELECT count(*) FROM spieler"), marketPlayerCount);
    EXPECT_EQ(w.count("SELECT count(*) FROM vereinspieler WHERE verein = 0"), marketPlayerCount);
    EXPECT_EQ(w.count("SELECT count(*) FROM a4spieler"), 1);
    EXPECT_TRUE(talents > 0 && w.count("SELECT count(*) FROM e_attribute") == talents);
}

TEST(DatabaseCare, CompactionKeepsTheContentsAndShrinksTheFile)
{
    TempFolder dir;
    const std::unique_ptr<World> world = openworld(dir.path());
    ASSERT_TRUE(world->db());
    world->db()->exec("CREATE TABLE ballast (x TEXT); "
                      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                      "INSERT INTO ballast SELECT printf('%.500c', 'x') FROM n; DELETE FROM ballast");
    const QStringList before = dumpworld(*world->db());
    const qint64 size = QFileInfo(dir.file("zorbo.mdb")).size();
    int told = 0;
    QObject::connect(world.get(), &World::changed, [&](const Change &c) { told += c.everything; });

    const Result r = comp_db(*world);
    ASSERT_TRUE(r.ok) << r.message.toStdString();
    ASSERT_TRUE(world->db()) << "open again at once";
    EXPECT_EQ(dumpworld(*world->db()), before);
    EXPECT_LT(QFileInfo(dir.file("zorbo.mdb")).size(), size - 1000 * 1000);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(QDir(dir.path()).entryList({"zorbo*.mdb", "*.tmp"}, QDir::Files), QStringList{"zorbo.mdb"});
    world->db()->run("UPDATE vereine SET NAME = 'Markt' WHERE NUMMER = 0");
    EXPECT_EQ(world->db()->scalar("SELECT NAME FROM vereine WHERE NUMMER = 0").toString(), "Markt");
}

TEST(DatabaseCare, AFailedCompactionLeavesTheOldFileAndTheOpenDatabase)
{
    TempFolder dir;
    const std::unique_ptr<World> world = openworld(dir.path());
    ASSERT_TRUE(world->db());
    const QByteArray bytes = readBytes(dir.file("zorbo.mdb"));
    // Something that is no file of ours stands where the copy goes.
    ASSERT_TRUE(QDir(dir.path()).mkpath("zorbo_komprimiert.tmp/inhalt"));
    const Result r = comp_db(*world);
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(r.message.startsWith("Die Datenbank lässt sich nicht komprimieren")) << r.message.toStdString();
    EXPECT_EQ(readBytes(dir.file("zorbo.mdb")), bytes);
    ASSERT_TRUE(world->db());
    EXPECT_EQ(world->db()->scalar("SELECT count(*) FROM spieler").toInt(), marketPlayerCount);
    EXPECT_TRUE(QFileInfo(dir.file("zorbo_komprimiert.tmp/inhalt")).isDir());

    // A backup left by an earlier failure is told at the start and stays.
    writeBytes(dir.file("zorbo_backup.mdb"), "alt");
    const std::unique_ptr<World> again = openworld(dir.path());
    EXPECT_TRUE(again->databaseMessage().contains("zorbo_backup.mdb"));
    EXPECT_EQ(readBytes(dir.file("zorbo_backup.mdb")), "alt");
}

TEST(DatabaseCare, DroppingTheHistoryGoesWithTheCompactionOrNotAtAll)
{
    TempFolder dir;
    const std::unique_ptr<World> world = openworld(dir.path());
    ASSERT_TRUE(world->db());
    for (const char *name : {"Eins", "Zwei"})
        ASSERT_TRUE(world->run([&](Database &db) { return renameclub(db, 0, name); }, {}, Step{name}).ok);
    const auto steps = [&] { return world->db()->scalar("SELECT count(*) FROM verlauf").toInt(); };

    // A stop at the last moment it is asked for, and a copy that can't be
    // written, leave the history, the file and the restore points.
    const Progress stopatend = [](qint64 done, qint64 total) { return done < total; };
    Result r;
    EXPECT_NO_THROW(r = comp_db(*world, stopatend, true));
    EXPECT_TRUE(r.cancelled) << r.message.toStdString();
    ASSERT_TRUE(world->db());
    EXPECT_EQ(steps(), 2);
    ASSERT_TRUE(QDir(dir.path()).mkpath("zorbo_komprimiert.tmp/inhalt"));
    r = comp_db(*world, {}, true);
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(r.message.contains("Verlauf")) << r.message.toStdString();
    EXPECT_EQ(steps(), 2);
    EXPECT_TRUE(restorepoints(dir.path()).isEmpty());
    ASSERT_TRUE(QDir(dir.file("zorbo_komprimiert.tmp")).removeRecursively());

    // Done, the history is gone, and the restore point of the run holds it.
    r = comp_db(*world, {}, true);
    ASSERT_TRUE(r.ok) << r.message.toStdString();
    EXPECT_EQ(steps(), 0);
    const QList<RestorePoint> points = restorepoints(dir.path());
    ASSERT_EQ(points.size(), 1);
    EXPECT_EQ(Database(points[0].path, Database::ReadOnly).scalar("SELECT count(*) FROM verlauf").toInt(), 2);
    EXPECT_EQ(world->db()->scalar("SELECT NAME FROM vereine WHERE NUMMER = 0").toString(), "Zwei");
}
