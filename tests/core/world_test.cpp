#include "core/gamedb.h"
#include "core/generator.h"
#include "core/teamtree.h"
#include "core/world.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::keysUnder;
using zorbo::test::TempFolder;

namespace {

void addCountry(Database &db, int nr, const QString &name, const QString &nation, const QString &continent)
{
    db.run("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES (?1, ?2, ?3, ?4)", nr, name, nation,
           continent);
}

void addClub(Database &db, int nr, const QString &name, const QString &nation)
{
    db.run("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (?1, ?2, ?3)", nr, name, nation);
}

} // namespace

TEST(TeamTree, EmptyWorldHasRootMarketAndContinents)
{
    const TeamTree none = load_dbteam(nullptr);
    ASSERT_EQ(none.nodes.size(), 13);
    EXPECT_EQ(none.spielerlaender, QStringList({"TRANSFERMARKT"}));

    TempFolder dir;
    OpenedDb o = opendb(dir.file("zorbo.mdb"));
    const TeamTree tree = load_dbteam(o.db.get());
    EXPECT_TRUE(tree.marketCreated);
    ASSERT_EQ(tree.nodes.size(), 14);
    EXPECT_EQ(tree.nodes[1].key, "T0");
    EXPECT_FALSE(load_dbteam(o.db.get()).marketCreated);
}

TEST(TeamTree, CountriesClubsAndListsInTheTreesOrder)
{
    TempFolder dir;
    OpenedDb o = opendb(dir.file("zorbo.mdb"));
    Database &db = *o.db;
    addCountry(db, 10, "Österreich", "Österreich", "West-Europa");
    addCountry(db, 11, "Deutschland", "BR Deutschland", "West-Europa");
    addCountry(db, 12, "Nirgendwo", "Nirgendwo", "Mond");
    addClub(db, 20, "Wacker", "Deutschland");
    addClub(db, 21, "Austria", "Deutschland");
    addClub(db, 22, "Rapid", "Österreich");
    addClub(db, 23, "Irgendwer", "Nirgendwo");
    addClub(db, 24, "Zweitname", "BR Deutschland"); // clubs hang under NAME only
    addClub(db, 25, "Heimatlos", "Atlantis");

    const TeamTree tree = load_dbteam(&db);
    EXPECT_EQ(keysUnder(tree, "West-Europa"), QStringList({"L11", "L10"}));
    EXPECT_EQ(keysUnder(tree, "L11"), QStringList({"T21", "T20"}));
    EXPECT_EQ(keysUnder(tree, "L10"), QStringList({"T22"}));
    EXPECT_TRUE(keysUnder(tree, "L12").isEmpty()) << "a country without a known continent has no node";
    for (const TreeNode &n : tree.nodes)
        EXPECT_NE(n.key, "T25");

    EXPECT_EQ(tree.laender, QStringList({"Deutschland", "BR Deutschland", "Nirgendwo", "Österreich"}));
    EXPECT_EQ(tree.spielerlaender.first(), "TRANSFERMARKT");
    EXPECT_EQ(tree.spielerlaender.mid(1), tree.laender);
    ASSERT_EQ(tree.vereine.size(), 4);
    EXPECT_EQ(tree.vereine[0].text, "Austria (BR Deutschland)");
    EXPECT_EQ(tree.vereine[0].number, 21);
    EXPECT_EQ(newteamnumber(db), 26);
}

TEST(World, InitCreatesEverythingOnceAndAgainChangesNothing)
{
    TempFolder dir;
    std::unique_ptr<World> first = openworld(dir.path());
    ASSERT_NE(first->db(), nullptr) << first->messages().join('\n').toStdString();
    EXPECT_TRUE(first->marketCreated());
    EXPECT_TRUE(first->messages().isEmpty()) << first->messages().join('\n').toStdString();
    for (const char *sub : {"attribute", "gesicht", "trikot/original", "trikot/zorbode", "wappen"})
        EXPECT_TRUE(QDir(dir.path() + "/" + sub).exists()) << sub;
    first.reset();

    const QByteArray ini = zorbo::test::readBytes(dir.file("zorboeditor.ini"));
    const std::unique_ptr<World> second = openworld(dir.path());
    ASSERT_NE(second->db(), nullptr);
    EXPECT_FALSE(second->marketCreated());
    EXPECT_EQ(zorbo::test::readBytes(dir.file("zorboeditor.ini")), ini);
}

TEST(World, RunsTellWhatTheyChangedOnceCommitted)
{
    TempFolder dir;
    const std::unique_ptr<World> world = openworld(dir.path());
    ASSERT_NE(world->db(), nullptr);
    QList<Change> told;
    QObject::connect(world.get(), &World::changed, [&](const Change &c) { told << c; });

    Result r = world->run([](Database &db) {
        db.run("INSERT INTO vereine (NUMMER, NAME) VALUES (5, 'Neu')");
        db.run("UPDATE spieler SET NAME = 'Anders' WHERE NUMMER = 7");
        db.run("UPDATE spieler SET NAME = 'Keiner' WHERE NUMMER = 99999"); // no row, no change
        return Result::success();
    });
    ASSERT_TRUE(r.ok) << r.message.toStdString();
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0].tables, QSet<QString>({"vereine", "spieler"}));
    EXPECT_EQ(told[0].teams, QSet<qint64>({5}));
    EXPECT_EQ(told[0].players, QSet<qint64>({7}));
    EXPECT_FALSE(told[0].everything);

    // A squad row names its club; a cleared table is told row by row, as
    // the history records every row.
    ASSERT_TRUE(world->run([](Database &db) {
        db.run("INSERT INTO vereinspieler VALUES (5, 7)");
        return Result::success();
    }));
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[1].tables, QSet<QString>({"vereinspieler"}));
    EXPECT_EQ(told[1].teams, QSet<qint64>({5}));
    EXPECT_TRUE(told[1].players.isEmpty());
    // Squad rows by the thousand, as an import writes them, among rows of
    // other clubs that stay: only the clubs of the rows written are told.
    ASSERT_TRUE(world->run([](Database &db) {
        db.run("INSERT INTO vereinspieler VALUES (8, 7)");
        for (int i = 0; i < 1200; ++i)
            db.run("INSERT INTO vereinspieler VALUES (?1, 7)", i % 2 ? 5 : 6);
        db.run("UPDATE kaderzeilen SET spieler = 8 WHERE verein = 8");
        return Result::success();
    }));
    ASSERT_EQ(told.size(), 3);
    EXPECT_EQ(told[2].teams, QSet<qint64>({5, 6, 8}));
    ASSERT_TRUE(world->run([](Database &db) {
        db.exec("DELETE FROM kaderzeilen WHERE verein <> 5 OR zeile > (SELECT min(zeile) FROM kaderzeilen)");
        return Result::success();
    }));
    told.removeLast();
    told.removeLast();
    ASSERT_TRUE(world->run([](Database &db) {
        db.exec("DELETE FROM vereinspieler");
        return Result::success();
    }));
    ASSERT_EQ(told.size(), 3);
    EXPECT_EQ(told[2].tables, QSet<QString>({"vereinspieler"}));

    // Stopped halfway, a run takes everything back and tells nothing.
    const Result stopped = world->run([](Database &db) {
        db.run("UPDATE vereine SET NAME = 'Halb' WHERE NUMMER = 5");
        spieler20new(db, 5, "Neu", 20, [](qint64 done, qint64) { return done < 3; });
        return Result::success();
    });
    EXPECT_TRUE(stopped.cancelled);
    EXPECT_EQ(world->db()->scalar("SELECT count(*) FROM spieler").toInt(), 1700);
    EXPECT_EQ(world->db()->scalar("SELECT NAME FROM vereine WHERE NUMMER = 5").toString(), "Neu");

    // So does a run that fails.
    r = world->run(
        [](Database &db) {
            db.run("UPDATE spieler SET NAME = 'Halb' WHERE NUMMER = 8");
            db.run("INSERT INTO vereine (NUMMER, NAME) VALUES (5, 'Doppelt')");
            return Result::success();
        },
        "Nicht gespeichert");
    EXPECT_FALSE(r.ok);
    EXPECT_FALSE(r.cancelled);
    EXPECT_TRUE(r.message.startsWith("Nicht gespeichert: ")) << r.message.toStdString();
    EXPECT_NE(world->db()->scalar("SELECT NAME FROM spieler WHERE NUMMER = 8").toString(), "Halb");
    EXPECT_EQ(told.size(), 3);
}
