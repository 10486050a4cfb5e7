#include "anstoss/freeplayers.h"
#include "anstoss/importsave.h"
#include "anstoss/league.h"
#include "core/market.h"
#include "core/strength.h"
#include "exchange/configruns.h"
#include "support/qstringprint.h"

#include "anstossfixture.h"

using namespace zorbo;
using namespace zorbo::test;

namespace {

struct Saving : ClubWorld {
    AetFile file;

    void load(const QString &team, const QList<AetPlayer> &players)
    {
        ASSERT_TRUE(file.load(writeaet(files, "club.aet", aettext(team, players))));
    }
    QVariantList player(qint64 nummer)
    {
        Statement st = db().prepare("SELECT * FROM spieler WHERE NUMMER = ?1");
        st.bind(1, nummer);
        EXPECT_TRUE(st.step());
        QVariantList row;
        for (int c = 0; c < st.columnCount(); ++c)
            row << st.value(c);
        return row;
    }
    // Saving must fail with a message holding the words, and change nothing.
    void expectRefused(const std::function<AnstossResult()> &save, const QStringList &words)
    {
        const QStringList before = dumpworld(db());
        const AnstossResult r = save();
        EXPECT_FALSE(r.ok());
        for (const QString &w : words)
            EXPECT_TRUE(r.result.message.contains(w)) << r.result.message.toStdString() << " / " << w.toStdString();
        EXPECT_EQ(dumpworld(db()), before);
    }
};

QList<SquadEntry> fromFile(int from, int count)
{
    QList<SquadEntry> out;
    for (int i = 0; i < count; ++i)
        out.append({true, from + i});
    return out;
}

} // namespace

TEST_F(Saving, EntriesLandOnTheSlotsInOrderClubRowsReadBeforeTheyAreOverwritten)
{
    load("Name=Neu\r\n", squadof({2, 6, 6, 6}));
    const QList<qint64> slot = squadslots();
    db().run("UPDATE spieler SET NAME = 'Letzter', ERLERNT = '1,2', GESPERRT = '3', NATION = 'Atlantis' WHERE NUMMER = ?1",
             slot[19]);
    const QVariantList last = player(slot[19]);
    // The club's last player goes first, onto the slot that an entry before him overwrites.
    QList<SquadEntry> squad{{false, slot[19]}};
    squad += fromFile(0, 19);
    const AnstossResult r = saveimportplayers(db(), file, club, squad);
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    QVariantList moved = player(slot[0]);
    moved[0] = last[0];
    EXPECT_EQ(moved, last); // every column along, talents and country included
    EXPECT_EQ(db().scalar("SELECT count(*) FROM vereine_national WHERE NAME = 'Atlantis'").toInt(), 1);

    // The file's players follow in list order, the draws replayed from the
    // generator's start in the save's order: maximum strength, height, games left, face.
    Rnd replay;
    int gain = 0;
    for (int i = 0; i < 19; ++i) {
        const QVariantList p = player(slot[i + 1]);
        const int art = i < 2 ? 0 : i < 8 ? 1 : i < 14 ? 2 : 3;
        const int k = i - (art == 0 ? 0 : art == 1 ? 2 : art == 2 ? 8 : 14);
        const double s = 10000 - 500 * k;
        QStringList got;
        for (int c : {1, 2, 3, 7, 11, 15, 16})
            got << p[c].toString();
        EXPECT_EQ(got, QStringList({file.value(aetsection(i), "Name"), "V.", QString::number(qint64(s)), QString::number(art),
                                    QString::number(i + 1), "", ""}))
            << i;
        rnd() = replay;
        EXPECT_EQ(p[4].toLongLong(), staerkegewinn(s, gain)) << i;
        EXPECT_EQ(p[6].toInt(), int(rnd().next() * 30.0f) + 175) << i;
        EXPECT_EQ(p[8].toInt(), 10 + int(rnd().next() * 5.0f)) << i;
        EXPECT_EQ(p[12].toLongLong(), gesichtbauen(0, 3)) << i;
        replay = rnd();
    }
}

TEST_F(Saving, AllClubPlayersReorderTheSquadAndKeepTheirData)
{
    load("Name=Neu\r\n", {});
    const QList<qint64> slot = squadslots();
    QList<QVariantList> before;
    QList<SquadEntry> squad;
    for (int i = 19; i >= 0; --i) {
        before.prepend(player(slot[i]));
        squad.append({false, slot[i]});
    }
    ASSERT_TRUE(saveimportplayers(db(), file, club, squad).ok());
    for (int i = 0; i < 20; ++i) {
        QVariantList now = player(slot[i]);
        now[0] = before[19 - i][0];
        EXPECT_EQ(now, before[19 - i]);
    }
}

TEST_F(Saving, PlayerSaveRefusals)
{
    load("Name=Neu\r\n", squadof({2, 6, 6, 6}) + QList<AetPlayer>{{"X", "Y", "7"}, {"Z", "Y", QString()}});
    expectRefused([&] { return saveimportplayers(db(), file, club, fromFile(0, 19)); }, {"19 statt 20"});
    expectRefused([&] { return saveimportplayers(db(), file, club, fromFile(0, 19) + fromFile(20, 1)); }, {"[Spieler21]", "Position", "»7«"});
    expectRefused([&] { return saveimportplayers(db(), file, club, fromFile(0, 19) + fromFile(21, 1)); }, {"[Spieler22]", "Position", "fehlt"});
    db().run("DELETE FROM vereinspieler WHERE spieler = (SELECT max(spieler) FROM vereinspieler)");
    expectRefused([&] { return saveimportplayers(db(), file, club, fromFile(0, 20)); }, {"nur 19 Spieler"});
    // A squad row naming no player takes an entry that lands nowhere; the message counts what landed.
    db().run("INSERT INTO vereinspieler VALUES (?1, -5)", club);
    const AnstossResult r = saveimportplayers(db(), file, club, fromFile(0, 20));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(r.result.message, "19 Spieler gespeichert.");
}

TEST_F(Saving, TeamSaveWritesTheTickedGroupsAndTheExporterColours)
{
    load("Name=Neuer \"FC\" d'Or\r\nStadt=Neustadt\r\nLand=Neuland\r\nstadion=Arena\r\nStadionsitz=9000\r\n"
         "Stadionsteh=1000\r\ntrikoth0=1, 2,3\r\ntrikota2=  9,8,7\r\n",
         {});
    TeamImport t = teamfromfile(db(), file, club);
    t.team = true;
    t.kitart[2] = 9;
    ASSERT_TRUE(saveimportteam(db(), file, club, t, 0).ok());
    // Stadium and kits not ticked: the old stadium, the colour table's colour.
    const QString row = "SELECT NAME || '|' || STADT || '|' || NATION || '|' || STADION_NAME || '|' || TW_TRIKOT_ART || '|' "
                        "|| F_TRIKOT_SPIELER || '|' || KURZNAME FROM vereine WHERE NUMMER = 7";
    const QString tableColour = db().scalar("SELECT Trikot1 FROM e_trikotfarbeoriginal WHERE Nummer = 3").toString();
    EXPECT_EQ(db().scalar(row).toString(), "Neuer \"FC\" d'Or|Neustadt|Neuland|Altstadion|9|" + tableColour + "|ALT");
    EXPECT_EQ(db().scalar("SELECT KONTINENT FROM vereine_national WHERE NAME = 'Neuland'").toString(), "Atlantis");

    t.team = false;
    t.stadium = true;
    t.kits = true;
    ASSERT_TRUE(saveimportteam(db(), file, club, t, 0).ok());
    // The file's spacing; a missing key is black.
    const QString keeper = db().scalar("SELECT Trikot1 FROM e_trikotfarbeoriginal WHERE Nummer = 9").toString();
    EXPECT_EQ(db().scalar("SELECT F_TRIKOT_SPIELER || '|' || F_AUSW_TRIKOT_SPIELER || '|' || F_HOSE_SPIELER || '|' || "
                          "F_TRIKOT_WERBUNG || '|' || F_HOSE_STREIFEN || '|' || STADION_NAME || '|' || STADION_SITZPL || "
                          "'|' || F_TRIKOT_TORWART FROM vereine WHERE NUMMER = 7").toString(),
              "1, 2,3|  0,  0,  0|  0,  0,  0|9,8,7|  0,  0,  0|Arena|9000|" + keeper);
}

TEST_F(Saving, TeamSaveRefusals)
{
    load("trikoth1=1,2\r\n", {});
    TeamImport t = teamfromfile(db(), file, club);
    expectRefused([&] { return saveimportteam(db(), file, club, t, 0); }, {"keine der Gruppen"});
    t.kits = true;
    expectRefused([&] { return saveimportteam(db(), file, club, t, 0); }, {"[team]", "trikoth1"});
    t.kits = false;
    t.stadium = true;
    expectRefused([&] { return saveimportteam(db(), file, club, t, 0); }, {"Sitzplätze"});
    t.stadium = false;
    t.team = true;
    expectRefused([&] { return saveimportteam(db(), file, 99, t, 0); }, {"99"});
    // The file has neither name nor country: the rules of every team save hold, and no country without a name is made.
    expectRefused([&] { return saveimportteam(db(), file, club, t, 0); }, {"»Teamname lang«"});
    t.name = "Neu";
    t.land = QStringLiteral("  ");
    expectRefused([&] { return saveimportteam(db(), file, club, t, 0); }, {"»Land«"});
}

TEST_F(Saving, FreePlayersAndLeagueRunsAllOrNothing)
{
    QList<AetPlayer> players = squadof({2, 7, 7, 7});
    const QString path = writeaet(files, "Land/Liga/Eins.aet", aettext("Name=Eins\r\n", players));
    AnstossResult r = runfreeplayers(db(), path);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(db().scalar("SELECT count(*) FROM a4spieler").toInt(), 23);
    EXPECT_EQ(db().scalar("SELECT verein FROM a4spieler LIMIT 1").toString(), "Eins");
    EXPECT_EQ(r.result.message, "23 Spieler in Freie Spieler importiert!");
    // The same file again only brings duplicates, which a4deleteid removes;
    // the message counts what stays.
    r = runfreeplayers(db(), path, {0, 1});
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(db().scalar("SELECT count(*) FROM a4spieler").toInt(), 23);
    EXPECT_EQ(r.players, 0);
    EXPECT_EQ(r.result.message, "0 Spieler in Freie Spieler importiert! 2 Spieler standen schon in Freie Spieler "
                                "und wurden als doppelt verworfen.");

    players[3].position = "9";
    writeaet(files, "Land/Liga/Zwei.aet", aettext("Name=Zwei\r\n", squadof({2, 7, 7, 7})));
    writeaet(files, "Land/Liga/Drei.aet", aettext("Name=Drei\r\n", players));
    const QString lan = writeaet(files, "l.lan", "[K]\r\nLand=Land\r\n[Liga]\r\n1=Zwei\r\n2=Drei\r\n3=Eins\r\n");
    expectRefused([&] { return importleague(db(), lan); }, {"Drei.aet", "[Spieler4]"});
    writeaet(files, "Land/Liga/Drei.aet", aettext("Name=Drei\r\n", squadof({2, 7, 7, 7})));
    int calls = 0;
    expectRefused([&] { return importleague(db(), lan, [&](qint64, qint64) { return ++calls < 2; }); },
                  {"Abgebrochen"});
    r = importleague(db(), lan);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(r.clubs, 2) << "Eins brought only duplicates";
    EXPECT_EQ(r.players, 46);
    EXPECT_EQ(r.result.message, "2 Vereine mit 46 Spielern in Freie Spieler importiert. 23 Spieler standen schon in "
                                "Freie Spieler und wurden als doppelt verworfen.");
    EXPECT_EQ(db().scalar("SELECT count(*) FROM a4spieler").toInt(), 69);
}

// The workbench stores what the file has, also beyond what the windows show,
// and the world's own export reads back into an equal world.
TEST_F(Saving, ValuesBeyondTheWindowsAreKeptAndTheExportReadsBack)
{
    const QString name = QStringLiteral("Sportgemeinschaft Bärenstadt-Weißach 1899"); // 42 characters with the "!"
    QList<AetPlayer> players = squadof({2, 6, 6, 6});
    players[0].staerke = QStringLiteral("12500");
    load("Name=" + name + "!\r\nStadt=Neustadt\r\nLand=Deutschland\r\n", players);
    TeamImport t = teamfromfile(db(), file, club);
    t.team = true;
    for (const AnstossResult &r : {saveimportteam(db(), file, club, t, 0), saveimportplayers(db(), file, club, fromFile(0, 20))}) {
        EXPECT_TRUE(r.ok() && r.result.message.endsWith(" 1 Wert außerhalb der Fensterbereiche behalten, siehe Probleme"))
            << r.result.message.toStdString();
    }
    EXPECT_EQ(db().scalar("SELECT NAME FROM vereine WHERE NUMMER = 7").toString(), name + "!");
    EXPECT_EQ(db().scalar("SELECT count(*) FROM spieler WHERE \"Stärke\" = 12500").toInt(), 1);

    // The market, and values a file can carry in the columns the fixture left Null.
    ensuretransfermarket(db());
    for (const char *table : {"vereine", "vereine_national"}) {
        for (const ColumnInfo &c : db().columns(table))
            db().run(QStringLiteral("UPDATE %1 SET \"%2\" = ?1 WHERE \"%2\" IS NULL").arg(table, c.name),
                     c.isText() ? QVariant(QString("")) : QVariant(0));
    }
    const QStringList tables{"vereine", "vereine_national", "spieler", "vereinspieler"};
    ASSERT_TRUE(exportconfig(db(), files.file("1_tm.cfg"), ConfigKind::Teams).ok());
    ASSERT_TRUE(exportconfig(db(), files.file("1_sp.cfg"), ConfigKind::Players).ok());
    NewWorld back;
    const ExchangeResult teams = importteamsrun(back.db(), files.file("1_tm.cfg"));
    ASSERT_TRUE(teams.ok()) << teams.result.message.toStdString();
    EXPECT_TRUE(teams.result.message.contains("außerhalb der Fensterbereiche behalten"));
    ASSERT_TRUE(importplayersrun(back.db(), files.file("1_sp.cfg")).ok());
    EXPECT_EQ(dumpworld(back.db(), tables, true), dumpworld(db(), tables, true));
}
