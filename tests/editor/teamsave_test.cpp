#include "core/market.h"
#include "core/schema.h"
#include "core/teamtree.h"
#include "core/kitcolours.h"
#include "editor/teamsave.h"
#include "exchange/configruns.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

using namespace zorbo;

namespace {

class TeamSave : public ::testing::Test {
protected:
    void SetUp() override
    {
        db().run("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES (10, 'Österreich', "
                 "'Österreich', 'West-Europa')");
        db().run("INSERT INTO vereine (NUMMER, NAME, NATION, AUSWEICH_TW_TRIKOT_ART) VALUES (20, 'Rapid', "
                 "'Österreich', 55)");
        db().run("INSERT INTO spieler (NUMMER, NAME, NATION) VALUES (1, 'Huber', 'Österreich'), (2, 'Maier', 'Tirol')");
        // Kit colours of our own, one set per kit table, so that the copy shows where it came from.
        for (const char *table : {"e_trikotfarbeoriginal", "e_trikotfarbezorbode"}) {
            const QString t = QLatin1String(table);
            db().run("DELETE FROM " + t);
            for (int art : {3, 7, 9})
                db().run("INSERT INTO " + t + " VALUES (?1, ?2, ?3, ?4, ?5)", art, t.left(6) + "a" + QString::number(art),
                         t.right(4) + "b" + QString::number(art), "h" + QString::number(art), "s" + QString::number(art));
        }
    }
    Database &db() { return world.db(); }
    QString text(const QString &sql, qint64 nr) { return db().scalar(sql, nr).toString(); }
    zorbo::test::NewWorld world;
};

} // namespace

TEST_F(TeamSave, RenamedCountryCarriesItsNameIntoPlayersAndClubs)
{
    auto form = readteam(db(), 10, NationalMode);
    ASSERT_TRUE(form);
    EXPECT_EQ(form->kontinent, "West-Europa");
    form->name = "Ostmark \"neu\"";
    form->kontinent = "Ost-Europa";
    db().run("UPDATE vereine_national SET NATION = 'Republik Österreich' WHERE NUMMER = 10");
    auto unchanged = readteam(db(), 10, NationalMode);
    ASSERT_TRUE(teamsave(db(), *unchanged, false, "Österreich", 0));
    EXPECT_EQ(text("SELECT NATION FROM vereine_national WHERE NUMMER = ?1", 10), "Republik Österreich")
        << "the country's second name stays while its name does";
    ASSERT_TRUE(teamsave(db(), *form, false, "Österreich", 0));

    EXPECT_EQ(text("SELECT NAME || '/' || NATION || '/' || KONTINENT FROM vereine_national WHERE NUMMER = ?1", 10),
              "Ostmark \"neu\"/Ostmark \"neu\"/Ost-Europa");
    EXPECT_EQ(text("SELECT NATION FROM vereine WHERE NUMMER = ?1", 20), "Ostmark \"neu\"");
    EXPECT_EQ(text("SELECT group_concat(NATION, '|') FROM (SELECT NATION FROM spieler WHERE NUMMER >= ?1 ORDER BY NUMMER)", 1), "Ostmark \"neu\"|Tirol");

    const TeamTree tree = load_dbteam(&db());
    bool clubUnderCountry = false;
    for (const TreeNode &n : tree.nodes)
        clubUnderCountry |= n.key == "T20" && n.parent == "L10";
    EXPECT_TRUE(clubUnderCountry) << "after the rebuild the club stands under the new name";
}

TEST_F(TeamSave, NewClubGetsItsSquadOnceAndNewCountryNone)
{
    TeamForm club = newclubform(30, "Österreich");
    club.arts = {3, 7, 9};
    ASSERT_TRUE(teamsave(db(), club, true, "Team30", 0));
    EXPECT_EQ(db().scalar("SELECT count(*) FROM spieler s JOIN vereinspieler v ON v.spieler = s.NUMMER "
                          "WHERE v.verein = 30 AND s.NATION = 'Österreich'").toInt(), 20);
    club.name = "Sturm";
    ASSERT_TRUE(teamsave(db(), club, false, "Team30", 0));
    EXPECT_EQ(db().scalar("SELECT count(*) FROM vereinspieler WHERE verein = 30").toInt(), 20);
    EXPECT_EQ(text("SELECT NAME FROM vereine WHERE NUMMER = ?1", 30), "Sturm");

    const TeamForm country = newcountryform(31, "Asien");
    ASSERT_TRUE(teamsave(db(), country, true, "Land31", 0));
    EXPECT_EQ(db().scalar("SELECT count(*) FROM vereinspieler WHERE verein = 31").toInt(), 0);
    EXPECT_TRUE(db().scalar("SELECT NUMMER FROM vereine WHERE NUMMER = 31").isNull());
    EXPECT_EQ(text("SELECT KONTINENT FROM vereine_national WHERE NUMMER = ?1", 31), "Asien");
}

TEST_F(TeamSave, ArtsAndColoursFollowTheKitSet)
{
    auto form = readteam(db(), 20, ClubMode);
    ASSERT_TRUE(form);
    form->arts = {3, 7, 9}; // home, away, keeper
    form->sitz = " 12000 ";
    ASSERT_TRUE(teamsave(db(), *form, false, "Rapid", 1));
    // The second keeper kit (55) is in no form and stays.
    EXPECT_EQ(text("SELECT TRIKOT_ART || '/' || AUSWEICH_TRIKOT_ART || '/' || TW_TRIKOT_ART || '/' || AUSWEICH_TW_TRIKOT_ART "
                   "|| '/' || STADION_SITZPL || '/' || F_TRIKOT_SPIELER || '/' || F_HOSE_SPIELER || '/' || F_AUSW_HOSE_SPIELER "
                   "|| '/' || F_HOSE_STREIFEN || '/' || F_TRIKOT_TORWART || '/' || F_HOSE_TRAINER || '/' || F_AUSW_TRIKOT_SPIELER "
                   "FROM vereine WHERE NUMMER = ?1", 20),
              "3/7/9/55/12000/e_trika3/s3/e_trika7/s7/e_trika9/s9/bodeb3");

    settrikotfarbe(db(), 20, TeamTable::Vereine, 0);
    const QString switched = "SELECT F_AUSW_TRIKOT_SPIELER || '/' || F_TRIKOT_WERBUNG || '/' || F_HOSE_TORWART || '/' || "
                             "F_ALTERN_HOSE_SPIELER FROM vereine WHERE NUMMER = ?1";
    EXPECT_EQ(text(switched, 20), "inalb3/h7/inalb9/inalb7");

    // An art without a colour row leaves that slot's colours alone.
    db().run("UPDATE vereine SET TRIKOT_ART = 42 WHERE NUMMER = 20");
    settrikotfarbe(db(), 20, TeamTable::Vereine, 1);
    EXPECT_EQ(text(switched, 20), "inalb3/h7/bodeb9/bodeb7");

    // Only a kit whose drawing changes takes the colours of the kit set.
    db().run("UPDATE vereine SET TRIKOT_ART = 3, F_HOSE_SPIELER = 'own', F_HOSE_STREIFEN = 'own' WHERE NUMMER = 20");
    form->arts = {3, 9, 9};
    ASSERT_TRUE(teamsave(db(), *form, false, "Rapid", 1));
    EXPECT_EQ(text("SELECT F_HOSE_SPIELER FROM vereine WHERE NUMMER = ?1", 20), "own");
    EXPECT_EQ(text("SELECT F_HOSE_STREIFEN FROM vereine WHERE NUMMER = ?1", 20), "s9");
}

TEST_F(TeamSave, NumberFieldWithLettersIsRefusedAndNothingWritten)
{
    auto form = readteam(db(), 10, NationalMode);
    ASSERT_TRUE(form);
    form->name = "Neuland";
    form->steh = "viele";
    const Result r = teamsave(db(), *form, false, "Österreich", 0);
    EXPECT_FALSE(r);
    EXPECT_TRUE(r.message.contains("Stehplätze")) << r.message.toStdString();
    form->steh.clear();
    form->sitz = "1O00";
    EXPECT_TRUE(teamsave(db(), *form, false, "Österreich", 0).message.contains("Sitzplätze"));
    EXPECT_EQ(text("SELECT NAME FROM vereine_national WHERE NUMMER = ?1", 10), "Österreich");
    EXPECT_EQ(text("SELECT NATION FROM spieler WHERE NUMMER = ?1", 1), "Österreich");
}

TEST_F(TeamSave, MarketModeReadsOnlyNameAndCrest)
{
    ensuretransfermarket(db());
    db().run("UPDATE vereine SET KURZNAME = 'TM', STADT = 'Wien' WHERE NUMMER = 0");
    const auto market = readteam(db(), 0, MarketMode);
    ASSERT_TRUE(market);
    EXPECT_EQ(market->name, "TRANSFERMARKT");
    EXPECT_EQ(market->grafiknr, "999");
    EXPECT_TRUE(market->kurzname.isEmpty());
    EXPECT_TRUE(market->stadt.isEmpty());
    EXPECT_FALSE(readteam(db(), 777, ClubMode));
}

TEST_F(TeamSave, NewCountryAndClubGoOutAsWholeRecordsThatReadBack)
{
    db().exec("DELETE FROM vereine; DELETE FROM vereine_national");
    ASSERT_TRUE(teamsave(db(), newcountryform(31, "Asien"), true, "Land31", 0));
    ASSERT_TRUE(teamsave(db(), newclubform(32, "Land31"), true, "Team32", 0));
    for (const char *table : {"vereine", "vereine_national"})
        for (const ColumnInfo &c : db().columns(table))
            EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE NUMMER > 30 AND \"%2\" IS NULL")
                                      .arg(table, c.name)).toInt(), 0)
                << table << "." << c.name.toStdString();

    const ExchangeResult out = exportconfig(db(), world.file("1_tm.cfg"), ConfigKind::Teams);
    ASSERT_TRUE(out.ok()) << out.result.message.toStdString();
    zorbo::test::NewWorld fresh;
    const ExchangeResult in = importconfig(fresh.db(), world.file("1_tm.cfg"), ConfigKind::Teams);
    ASSERT_TRUE(in.ok()) << in.result.message.toStdString();
    EXPECT_EQ(fresh->scalar("SELECT KONTINENT || '/' || KLIMA FROM vereine_national WHERE NUMMER = 31").toString(),
              "Asien/99,121,700");
    EXPECT_EQ(fresh->scalar("SELECT NATION FROM vereine WHERE NUMMER = 32").toString(), "Land31");
}

TEST_F(TeamSave, AnEmptyLongNameOrClubCountryIsRefusedAndNothingWritten)
{
    TeamForm club = newclubform(33, "Österreich");
    for (const QString &empty : {QString(), QStringLiteral("   ")}) {
        club.name = empty;
        const Result saved = teamsave(db(), club, true, "Team33", 0);
        ASSERT_FALSE(saved);
        EXPECT_TRUE(saved.message.contains("Teamname lang")) << saved.message.toStdString();
    }
    club = newclubform(33, QStringLiteral(" "));
    const Result saved = teamsave(db(), club, true, "Team33", 0);
    ASSERT_FALSE(saved);
    EXPECT_TRUE(saved.message.contains("»Land«")) << saved.message.toStdString();
    EXPECT_TRUE(db().scalar("SELECT NUMMER FROM vereine WHERE NUMMER = 33").isNull());
    EXPECT_EQ(db().scalar("SELECT count(*) FROM spieler").toInt(), 2);
}
