#include "core/strength.h"
#include "exchange/configruns.h"
#include "platform/random.h"
#include "tools/marketfill.h"
#include "tools/swap.h"
#include "toolsworld.h"

#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

TEST(Staerkegewinn, FractionalBaseKeepsWhatLiesBetweenHalfStarsAndCarriesTheGain)
{
    Staerkegewinn first(Staerkegewinn::Base::Fractional);
    EXPECT_EQ(first.maximum(3500), 3500) << "outside every range, and no gain before";

    for (int run = 0; run < 50; ++run) {
        Staerkegewinn market(Staerkegewinn::Base::Fractional);
        const qint64 m = market.maximum(2500); // b = 2.5
        EXPECT_TRUE(m == 2500 || m == 4500 || m == 6500) << m;
        // 3500 and 7500 lie in no range: they take the gain before them.
        EXPECT_EQ(market.maximum(3500) - 3500, m - 2500);
        EXPECT_EQ(market.maximum(7500) - 7500, m - 2500);
        const qint64 odd = market.maximum(2345); // t = 2.345 rounds to 2: no whole star added
        EXPECT_EQ((odd - 2345) % 2000, 0);
    }
    // For multiples of 1000 both rules agree, given the same draws.
    Staerkegewinn whole;
    Staerkegewinn fractional(Staerkegewinn::Base::Fractional);
    for (int s = 0; s <= 13000; s += 1000) {
        rnd().restart();
        const qint64 w = whole.maximum(s);
        rnd().restart();
        EXPECT_EQ(fractional.maximum(s), w) << "s = " << s;
    }
}

TEST(MarketFill, FewFreePlayersRewriteTheLowestSlotsAndOnlyTheirColumns)
{
    ToolsWorld w;
    const qint64 lowest = w.count("SELECT min(spieler) FROM vereinspieler WHERE verein = 0");
    const QVariant height = w.value("SELECT GROESSE || '/' || LIEBLINGSPOS_X || '/' || RUECKENNUMMER FROM spieler WHERE NUMMER = ?1", lowest);
    for (int i = 0; i < 28; ++i)
        w.freeplayer(QStringLiteral("Frei%1").arg(i), "Max", "Deutschland", "FC Export", i % 4, 4000);
    w.freeplayer("Frei28", "Max", "", "FC Export", 1, 4000);
    w.freeplayer("Neuland", "Olaf", "Utopia", "FC Export", 3, 2500);

    const MarketFill fill = spielera4_nach_tmarkt(w.db());
    ASSERT_TRUE(fill.result.ok) << fill.result.message.toStdString();
    EXPECT_EQ(fill.copied, 30);
    EXPECT_TRUE(fill.result.message.contains("30"));
    // The lowest 30 numbers of the market hold the free players, the others stay generated.
    EXPECT_EQ(w.count("SELECT count(*) FROM spieler s JOIN vereinspieler v ON v.spieler = s.NUMMER WHERE v.verein = 0 "
                      "AND s.NAME LIKE 'Frei%' OR s.NAME = 'Neuland'"),
              30);
    EXPECT_EQ(w.count("SELECT max(s.NUMMER) FROM spieler s WHERE s.NAME LIKE 'Frei%' OR s.NAME = 'Neuland'"), lowest + 29);
    EXPECT_EQ(w.value("SELECT GROESSE || '/' || LIEBLINGSPOS_X || '/' || RUECKENNUMMER FROM spieler WHERE NUMMER = ?1", lowest),
              height);
    EXPECT_EQ(w.count("SELECT count(*) FROM spieler WHERE NAME LIKE 'Frei%' AND (VORNAME <> 'M.' OR ERLERNT <> '' "
                      "OR GESPERRT <> '' OR \"REST_EINSÄTZE\" <> 7 OR GESICHT <> 4242 OR HAARFARBE <> 3)"),
              0);
    // A country the world lacks is added; the fractional maximum of 2500.
    EXPECT_EQ(w.count("SELECT count(*) FROM vereine_national WHERE NAME = 'Utopia'"), 1);
    EXPECT_EQ(w.count("SELECT count(*) FROM vereine_national WHERE NAME = ''"), 0);
    EXPECT_EQ(w.db().scalar("SELECT NATION FROM spieler WHERE NAME = 'Frei28'"), QVariant(QString(""))) << "no country, none made";
    const qint64 max = w.count("SELECT \"Max_Stärke\" FROM spieler WHERE NAME = 'Neuland'");
    EXPECT_TRUE(max == 2500 || max == 4500 || max == 6500) << max;
    // The free players stay for the next run.
    EXPECT_EQ(w.count("SELECT count(*) FROM a4spieler"), 30);
}

TEST(MarketFill, MoreFreePlayersThanSlotsFillEverySlotOnce)
{
    ToolsWorld w;
    {
        Transaction tx(w.db());
        for (int i = 0; i < 2000; ++i)
            w.freeplayer(QStringLiteral("Frei%1").arg(i), "Max", "Deutschland", "FC Export");
        tx.commit();
    }
    int reports = 0;
    const MarketFill fill = spielera4_nach_tmarkt(w.db(), [&](qint64, qint64 total) {
        EXPECT_EQ(total, marketPlayerCount);
        return ++reports > 0;
    });
    ASSERT_TRUE(fill.result.ok);
    EXPECT_EQ(fill.copied, marketPlayerCount);
    EXPECT_EQ(reports, marketPlayerCount);
    EXPECT_EQ(w.count("SELECT count(DISTINCT s.NAME) FROM spieler s JOIN vereinspieler v ON v.spieler = s.NUMMER "
                      "WHERE v.verein = 0 AND s.NAME LIKE 'Frei%'"),
              marketPlayerCount);
}

TEST(MarketFill, RefusesWithoutFreePlayersOrSlotsAndAStopChangesNothing)
{
    ToolsWorld w;
    const QStringList before = dumpworld(w.db());
    MarketFill fill = spielera4_nach_tmarkt(w.db());
    EXPECT_FALSE(fill.result.ok);
    EXPECT_TRUE(fill.result.message.contains("keine freien Spieler"));

    w.freeplayer("Frei", "Max", "Utopia", "FC Export");
    const QStringList withfree = dumpworld(w.db());
    fill = spielera4_nach_tmarkt(w.db(), [](qint64, qint64) { return false; });
    EXPECT_TRUE(fill.result.cancelled);
    EXPECT_EQ(dumpworld(w.db()), withfree) << "the stop also takes back the new country";

    w.db().exec("DELETE FROM vereinspieler WHERE verein = 0");
    fill = spielera4_nach_tmarkt(w.db());
    EXPECT_FALSE(fill.result.ok);
    EXPECT_TRUE(fill.result.message.contains("keine Spieler"));
    EXPECT_NE(before, withfree);
}

TEST(Swap, TwoClubsChangeTheirPlayersAndOnlyTheClubRowsMove)
{
    ToolsWorld w;
    w.club(1, "Deutschland", true);
    w.club(10, "FC Links");
    w.club(20, "SV Rechts");
    w.player(100, 10, "Links");
    w.player(101, 10, "Bleibt");
    w.player(200, 20, "Rechts");
    w.member(1, 100); // also in his national team
    const QString player100 = w.value("SELECT NAME || VORNAME || \"Stärke\" || ERLERNT FROM spieler WHERE NUMMER = ?1", 100).toString();

    ASSERT_TRUE(swapplayers(w.db(), 100, 200, 10, 20)) << "";
    // 100 stays in his national team too.
    EXPECT_EQ(w.value("SELECT group_concat(verein || ':' || spieler, ' ') FROM (SELECT * FROM vereinspieler "
                      "WHERE spieler < ?1 ORDER BY verein, spieler)", 100000).toString(),
              "1:100 10:101 10:200 20:100");
    EXPECT_EQ(w.value("SELECT NAME || VORNAME || \"Stärke\" || ERLERNT FROM spieler WHERE NUMMER = ?1", 100).toString(), player100);

    // The same club on both sides leaves the squad as it was.
    const QStringList before = dumpworld(w.db());
    ASSERT_TRUE(swapplayers(w.db(), 200, 101, 10, 10));
    EXPECT_EQ(dumpworld(w.db()), before);
    // A player no longer where the lists show him: nothing moves.
    const Result stale = swapplayers(w.db(), 100, 101, 10, 10);
    EXPECT_FALSE(stale.ok);
    EXPECT_TRUE(stale.message.contains("100"));
    EXPECT_EQ(dumpworld(w.db()), before);
    // Without clubs each player's one club is taken; the national team doesn't count.
    ASSERT_TRUE(swapplayers(w.db(), 100, 200));
    EXPECT_EQ(w.value("SELECT verein FROM vereinspieler WHERE spieler = ?1 AND verein > 1", 100).toInt(), 10);
}

TEST(Swap, FreePlayerTakesTheRowAndTheOutgoingPlayerKeepsAllThePoolHolds)
{
    ToolsWorld w;
    w.club(10, "FC Links");
    w.player(100, 10, "Weg", "Jürgen", 5, 3, 7000);
    w.player(101, 10, "Bleibt");
    const qint64 a = w.freeplayer("Neu", "Otto", "Utopia", "FC Export", 0, 2500);
    w.freeplayer("Doppelt", "D.", "X", "FC Export");
    w.freeplayer("Doppelt", "D.", "X", "FC Export");

    EXPECT_FALSE(swapfree(w.db(), a, 100, 10, "Anderer Verein").ok);
    const Result r = swapfree(w.db(), a, 100, 10, "FC Export");
    ASSERT_TRUE(r.ok) << r.message.toStdString();
    EXPECT_EQ(w.value("SELECT count(*) FROM vereinspieler WHERE verein = ?1", 10).toInt(), 2);
    EXPECT_EQ(w.value("SELECT NAME || '|' || VORNAME || '|' || \"Stärke\" || '|' || NATION || '|' || ART || '|' || "
                      "\"REST_EINSÄTZE\" || '|' || RUECKENNUMMER || '|' || GESICHT || '|' || HAUTFARBE || '|' || HAARFARBE "
                      "|| '|' || GROESSE || '|' || LIEBLINGSPOS_X || '|' || ERLERNT || GESPERRT FROM spieler WHERE NUMMER = ?1",
                      100)
                  .toString(),
              "Neu|O.|2500|Utopia|0|7|9|4242|0|3|190|0.5|");
    EXPECT_EQ(w.value("SELECT name || '|' || vorname || '|' || land || '|' || verein || '|' || position || '|' || staerke "
                      "|| '|' || restspiele || '|' || rueckennummer || '|' || gesicht || '|' || hautfarbe || '|' || haarfarbe "
                      "FROM a4spieler WHERE id > ?1 AND name = 'Weg'",
                      a)
                  .toString(),
              "Weg|J.|Deutschland|FC Export|3|7000|33|5|12345|1|2");
    EXPECT_EQ(w.value("SELECT count(*) FROM a4spieler WHERE id = ?1", a).toInt(), 0);
    EXPECT_EQ(w.count("SELECT count(*) FROM a4spieler WHERE name = 'Doppelt'"), 1) << "duplicates cleared after the swap";
    // Gone by now: the window's old lists are refused.
    EXPECT_FALSE(swapfree(w.db(), a, 101).ok);
    // The lists: the outgoing player stands under the exporter club, by position.
    const QList<SwapEntry> pool = freeplayers(w.db(), "FC Export");
    ASSERT_EQ(pool.size(), 2);
    EXPECT_EQ(pool[1].text + "/" + QString::number(pool[1].art), "J. Weg/3");
    EXPECT_EQ(freeclubs(w.db()), QStringList{"FC Export"});
}

// The market fill's maxima above six stars go out through the game's files
// and come back unchanged.
TEST(MarketFill, MaximaAboveSixStarsReadBackFromTheExport)
{
    ToolsWorld w;
    // One strength for all, so that the random order of the pool doesn't matter.
    for (int i = 0; i < 30; ++i)
        w.freeplayer(QStringLiteral("Hoch%1").arg(i), "Max", "Deutschland", "FC Export", i % 4, 8001);
    rnd().restart();
    ASSERT_TRUE(spielera4_nach_tmarkt(w.db()).result.ok);
    EXPECT_GT(w.count("SELECT count(*) FROM spieler WHERE \"Max_Stärke\" = 12001"), 0);

    for (const char *table : {"vereine", "vereine_national"}) {
        for (const ColumnInfo &c : w.db().columns(table))
            w.db().run(QStringLiteral("UPDATE %1 SET \"%2\" = ?1 WHERE \"%2\" IS NULL AND NUMMER <> 0").arg(table, c.name),
                       c.isText() ? QVariant(QString("")) : QVariant(0));
    }
    TempFolder files;
    ASSERT_TRUE(exportconfig(w.db(), files.file("1_tm.cfg"), ConfigKind::Teams).ok());
    ASSERT_TRUE(exportconfig(w.db(), files.file("1_sp.cfg"), ConfigKind::Players).ok());
    NewWorld back;
    ASSERT_TRUE(importteamsrun(back.db(), files.file("1_tm.cfg")).ok());
    const ExchangeResult players = importplayersrun(back.db(), files.file("1_sp.cfg"));
    ASSERT_TRUE(players.ok()) << players.result.message.toStdString();
    EXPECT_TRUE(players.result.message.contains("außerhalb der Fensterbereiche behalten, siehe Probleme"));
    const QStringList tables{"vereine", "vereine_national", "spieler", "vereinspieler"};
    EXPECT_EQ(dumpworld(back.db(), tables, true), dumpworld(w.db(), tables, true));
}

TEST(MarketFill, AMaximumBeyond32BitsStopsTheRunNamingPlayerAndField)
{
    ToolsWorld w;
    w.freeplayer("Rand", "Otto", "Deutschland", "FC Export", 1, 2147483000);
    const QStringList before = dumpworld(w.db());
    const MarketFill fill = spielera4_nach_tmarkt(w.db());
    EXPECT_FALSE(fill.result.ok);
    EXPECT_TRUE(fill.result.message.contains("Rand, Otto")) << fill.result.message.toStdString();
    EXPECT_TRUE(fill.result.message.contains("Max_Stärke")) << fill.result.message.toStdString();
    EXPECT_EQ(dumpworld(w.db()), before);
}
