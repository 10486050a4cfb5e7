// The search finds names without regard to case and accents, by any part,
// by number, and stays current with every run of the world.
#include "core/search.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::TempFolder;

namespace {

QStringList names(const QList<SearchHit> &hits)
{
    QStringList out;
    for (const SearchHit &h : hits)
        out << h.text;
    return out;
}

struct SearchWorld {
    TempFolder dir;
    std::unique_ptr<World> world = openworld(dir.path());

    SearchWorld()
    {
        const Result made = world->run([](Database &db) {
            db.exec("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES "
                    "(1, 'Österreich', 'Österreich', 'West-Europa'), (2, 'Deutschland', 'BRD', 'West-Europa')");
            db.exec("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (10, '1. FC Köln', 'Deutschland'), "
                    "(11, 'Rapid Wien', 'Österreich'), (4321, 'Straßenbahn SV', 'Österreich')");
            db.exec("INSERT INTO spieler (NUMMER, NAME, VORNAME, ART) VALUES (5000, 'Müller', 'T.', 2), "
                    "(5001, 'Strasser', 'S.', 0), (5002, 'Dvořák', 'Š.', 1), (4321, 'Štefan', 'Š.', 3), "
                    "(5003, 'MUELLER', 'M.', 3)");
            db.exec("INSERT INTO vereinspieler VALUES (10, 5000), (1, 5000), (11, 5001), (11, 4321)");
            return Result::success();
        });
        EXPECT_TRUE(made.ok) << made.message.toStdString();
    }
};

} // namespace

TEST(Search, FindsWithoutRegardToCaseAccentsAndSpelling)
{
    SearchWorld w;
    SearchIndex &index = SearchIndex::of(*w.world);
    EXPECT_EQ(names(index.find("muller").spieler), QStringList{"T. Müller"});
    EXPECT_EQ(names(index.find("koln").vereine), QStringList{"1. FC Köln"});
    EXPECT_EQ(names(index.find("stefan").spieler), QStringList{"Š. Štefan"});
    EXPECT_EQ(names(index.find("brd").laender), QStringList{"Deutschland"}) << "a country's second name counts";
    // ß and ss find each other, both ways.
    EXPECT_EQ(names(index.find("strasse").vereine), QStringList{"Straßenbahn SV"});
    EXPECT_EQ(names(index.find("straße").spieler), QStringList{"S. Strasser"});
    EXPECT_EQ(searchfold("Štefan Müller-Straße ŁÓDŹ"), "stefan muller-strasse lodz");
}

TEST(Search, FindsAnyPartOfANameAndGroupsHitsWithClubAndPosition)
{
    SearchWorld w;
    SearchIndex &index = SearchIndex::of(*w.world);
    const SearchResult part = index.find("  ller ");
    EXPECT_EQ(names(part.spieler), (QStringList{"M. MUELLER", "T. Müller"})) << "in German order";
    ASSERT_EQ(part.spieler.size(), 2);
    EXPECT_EQ(part.spieler[1].detail, "1. FC Köln, Mittelfeld") << "his first squad";
    EXPECT_EQ(part.spieler[1].teamKey, "T10");
    EXPECT_TRUE(part.spieler[0].teamKey.isEmpty()) << "in no squad";
    EXPECT_EQ(part.spieler[0].detail, "Sturm");

    // One or two letters look through the names without the index.
    const SearchResult shortText = index.find("wi");
    EXPECT_EQ(names(shortText.vereine), QStringList{"Rapid Wien"});
    EXPECT_TRUE(shortText.spieler.isEmpty());
    EXPECT_EQ(index.find("%").isEmpty(), true) << "LIKE's wildcards are plain text";
    EXPECT_EQ(index.find("\"").isEmpty(), true);

    const SearchResult limited = index.find("e", 1);
    EXPECT_EQ(limited.laender.size(), 1);
    EXPECT_EQ(limited.spieler.size(), 1);
}

TEST(Search, FindsNumbers)
{
    SearchWorld w;
    SearchIndex &index = SearchIndex::of(*w.world);
    const SearchResult r = index.find("#4321");
    EXPECT_EQ(names(r.vereine), QStringList{"Straßenbahn SV"});
    EXPECT_EQ(names(r.spieler), QStringList{"Š. Štefan"});
    EXPECT_EQ(r.spieler[0].teamKey, "T11");
    EXPECT_EQ(names(index.find("# 1").laender), QStringList{"Österreich"});
    EXPECT_TRUE(index.find("#x").isEmpty());
}

TEST(Search, StaysCurrentWithEveryRun)
{
    SearchWorld w;
    SearchIndex &index = SearchIndex::of(*w.world);
    w.world->run([](Database &db) {
        db.run("UPDATE spieler SET NAME = 'Schmidt' WHERE NUMMER = 5000");
        db.run("UPDATE vereine SET NAME = 'Austria Wien' WHERE NUMMER = 11");
        return Result::success();
    });
    EXPECT_TRUE(index.find("muller").spieler.isEmpty());
    EXPECT_EQ(names(index.find("schmidt").spieler), QStringList{"T. Schmidt"});
    EXPECT_EQ(names(index.find("wien").vereine), QStringList{"Austria Wien"});

    // A run the hook can't follow row by row rebuilds the whole index.
    w.world->run([](Database &db) {
        db.exec("DELETE FROM spieler");
        db.run("INSERT INTO spieler (NUMMER, NAME, VORNAME) VALUES (1, 'Neuer', 'N.')");
        return Result::success();
    });
    EXPECT_TRUE(index.find("schmidt").isEmpty());
    EXPECT_EQ(names(index.find("neuer").spieler), QStringList{"N. Neuer"});

    // A run that fails leaves the index as the database: unchanged.
    w.world->run([](Database &db) {
        db.run("UPDATE spieler SET NAME = 'Kahn' WHERE NUMMER = 1");
        return Result::failure("nein");
    });
    EXPECT_TRUE(index.find("kahn").isEmpty());
    EXPECT_FALSE(index.find("neuer").isEmpty());

    // The world opens its file anew after compacting it: the index follows
    // onto the new connection.
    ASSERT_TRUE(w.world->closedwhile([](const QString &) { return Result::success(); }));
    EXPECT_EQ(names(index.find("neuer").spieler), QStringList{"N. Neuer"});
    EXPECT_TRUE(index.rankplayers());
    EXPECT_EQ(w.world->db()->scalar("SELECT count(*) FROM temp.suche_rang").toInt(), 1);
}
