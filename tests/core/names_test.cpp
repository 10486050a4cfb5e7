// Names of countries and clubs compare as the old engine compared them:
// without regard to case, for every letter and not only A to Z.
#include "core/landneu.h"
#include "core/schema.h"
#include "core/teamtree.h"
#include "exchange/competitiontemplate.h"
#include "platform/names.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::keysUnder;
using zorbo::test::NewWorld;
using zorbo::test::TempFolder;

TEST(NameComparison, OneRuleInCodeAndInStatements)
{
    NewWorld w;
    Statement sql = w.db().prepare("SELECT samename(?1, ?2)");
    const auto inSql = [&sql](const QVariant &a, const QVariant &b) {
        sql.bind(1, a).bind(2, b);
        EXPECT_TRUE(sql.step());
        const QVariant v = sql.value(0);
        sql.reset();
        return v.isNull() ? -1 : v.toInt();
    };
    struct Case {
        const char *a, *b;
        bool same;
    };
    for (const Case &c : {Case{"Ägypten", "äGYPTEN", true}, Case{"MUSTERLAND", "Musterland", true},
                          Case{"ÖSTERREICH", "österreich", true}, Case{"Ελλάδα", "ΕΛΛΆΔΑ", true},
                          Case{"Österreich", "Osterreich", false}, Case{"Groß", "GROSS", false},
                          Case{"Musterland", "Musterland ", false}, Case{"", "", true}}) {
        EXPECT_EQ(samename(QString::fromUtf8(c.a), QString::fromUtf8(c.b)), c.same) << c.a << " / " << c.b;
        EXPECT_EQ(inSql(QString::fromUtf8(c.a), QString::fromUtf8(c.b)), c.same ? 1 : 0) << c.a << " / " << c.b;
    }
    EXPECT_EQ(inSql(QVariant(), QString("x")), -1) << "Null is no name, as with =";
}

TEST(NameComparison, LandneuFindsTheContinentOfAnyCase)
{
    NewWorld w;
    bool created = false;
    EXPECT_EQ(landneu(w.db(), "ägypten", &created), "ägypten");
    EXPECT_TRUE(created);
    EXPECT_EQ(w.db().scalar("SELECT KONTINENT FROM vereine_national WHERE NAME = 'ägypten'").toString(), "Nord-Afrika");
    landneu(w.db(), "ÖSTERREICH");
    EXPECT_EQ(w.db().scalar("SELECT KONTINENT FROM vereine_national WHERE NAME = 'ÖSTERREICH'").toString(), "West-Europa");
    // The row that decides stays exact: another spelling is another row.
    landneu(w.db(), "Ägypten", &created);
    EXPECT_TRUE(created);
    landneu(w.db(), "Ägypten", &created);
    EXPECT_FALSE(created);
    landneu(w.db(), "Ägyptenland", &created);
    EXPECT_TRUE(created) << "a longer name is another country";
    // A blank name makes no country; whoever has it keeps an empty one.
    for (const QString &blank : {QString(), QStringLiteral(""), QStringLiteral("  ")}) {
        const QString kept = landneu(w.db(), blank, &created);
        EXPECT_FALSE(created);
        EXPECT_TRUE(kept.isEmpty() && !kept.isNull());
    }
    EXPECT_EQ(w.db().scalar("SELECT count(*) FROM vereine_national").toInt(), 4);
}

TEST(NameComparison, TempligaCountsClubsOfAnySpelling)
{
    NewWorld w;
    w.db().exec("DELETE FROM e_landkontinent");
    w.db().exec("INSERT INTO e_landkontinent VALUES (1, 'Musterländ', 'West-Europa', 12, 3, 'CL')");
    w.db().exec("INSERT INTO vereine_national (NUMMER, NAME) VALUES (1, 'MUSTERLÄND'), (2, 'Musterländ')");
    w.db().exec("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES "
                "(10, 'a', 'MUSTERLÄND'), (11, 'b', 'musterländ'), (12, 'c', 'Musterländ'), (13, 'd', 'Musterland')");
    const ExchangeResult r = templiga(w.db(), w.dir.file("1_we.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    const QByteArray we = zorbo::test::readBytes(w.dir.file("1_we.cfg"));
    EXPECT_TRUE(we.contains("\tSTARTTEILNEHMER                    10,11,12\r\n")) << we.toStdString();
    // Of two rows of the country the one spelt like the league wins.
    EXPECT_TRUE(we.contains("\tLAND                               2\r\n"));
}

TEST(NameComparison, TreeHangsClubsUnderTheirCountryInAnyCase)
{
    NewWorld w;
    w.db().exec("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES (10, 'Österreich', 'Österreich', "
                "'West-Europa')");
    w.db().exec("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (20, 'Rapid', 'ÖSTERREICH'), "
                "(21, 'Austria', 'österreich'), (22, 'Sturm', 'Osterreich')");
    const TeamTree tree = load_dbteam(&w.db());
    EXPECT_EQ(keysUnder(tree, "L10"), QStringList({"T21", "T20"}));
}
