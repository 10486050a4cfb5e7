// The list of all players: each filter gives exactly its rows, in German
// order, a window at a time; the filter expression of the command line.
#include "core/playerrank.h"
#include "core/problems.h"
#include "core/search.h"
#include "editor/playerlist.h"
#include "players/playersworld.h"

using namespace zorbo;

namespace {

// The rows as "F1" (a free player) or "7", in list order.
QStringList keys(PlayerQuery &q)
{
    QStringList out;
    for (const PlayerRow &r : q.rows(0, 1000))
        out << (r.frei ? QStringLiteral("F") : QString()) + QString::number(r.nummer);
    return out;
}

QStringList filtered(PlayerQuery &q, const PlayerFilter &f)
{
    q.setfilter(f);
    const QStringList k = keys(q);
    EXPECT_EQ(q.count(), k.size()) << "the count agrees with the rows";
    return k;
}

// Players named by their numbers, free players with an F, as sql gives them
// (a column "free or not", then the number).
QStringList numbersof(Database &db, const QString &sql)
{
    QStringList out;
    Statement st = db.prepare(sql);
    while (st.step())
        out << (st.integer(0) ? QStringLiteral("F") : QString()) + QString::number(st.integer(1));
    return out;
}

// Changes the world through a run, so that its listeners hear of it.
void runsql(World &world, const char *sql)
{
    ASSERT_TRUE(world.run([&](Database &db) {
        db.exec(QString::fromUtf8(sql));
        return Result::success();
    }));
}

} // namespace

TEST(PlayerList, EachFilterGivesExactlyItsRows)
{
    test::PlayersWorld w;
    SearchIndex &index = SearchIndex::of(*w.world);
    PlayerQuery q(*w.world, index);
    // German order: Ä beside A, Ö beside O; the free player among them.
    EXPECT_EQ(filtered(q, {}), QStringList({"7", "F1", "8", "1", "3", "2", "6", "5", "4"}));
    EXPECT_EQ(q.total(), 9);

    PlayerFilter f;
    f.text = "muller";
    EXPECT_EQ(filtered(q, f), QStringList({"1"}));
    f.text = "zi";
    EXPECT_EQ(filtered(q, f), QStringList({"2"})) << "short texts too";
    f.text = "ÖZ";
    EXPECT_EQ(filtered(q, f), QStringList({"2"})) << "without regard to case and accents";
    f.text = "FRITZ";
    EXPECT_EQ(filtered(q, f), QStringList({"F1"}));
    f = {};
    f.land = "brasilien";
    EXPECT_EQ(filtered(q, f), QStringList({"F1", "6", "5", "4"}));
    f.freie = false;
    EXPECT_EQ(filtered(q, f), QStringList({"6", "5", "4"}));
    f = {};
    f.kontinent = "West-Europa";
    EXPECT_EQ(filtered(q, f), QStringList({"7", "1", "3", "2"}));
    f = {};
    f.verein = 10;
    EXPECT_EQ(filtered(q, f), QStringList({"1", "3", "2"}));
    f.verein.reset();
    f.vereinName = "deutschland";
    EXPECT_EQ(filtered(q, f), QStringList({"3"})) << "a national team by name";
    f = {};
    f.verein = 0;
    EXPECT_EQ(filtered(q, f), QStringList({"8"}));
    f = {};
    f.position = 3;
    f.staerkeBis = 4999;
    EXPECT_EQ(filtered(q, f), QStringList({"6", "5"}));
    f.staerkeVon = 3000;
    EXPECT_EQ(filtered(q, f), QStringList({"5"}));
    f = {};
    f.ohneVerein = true;
    EXPECT_EQ(filtered(q, f), QStringList({"7"}));
    f = {};
    f.doppelteNummer = true;
    EXPECT_EQ(filtered(q, f), QStringList({"6", "5"}));
    f = {};
    f.problem = true;
    QSet<QString> named;
    for (const Problem &p : checkproblems(w.db(), w.world->settings()).problems)
        if (p.where.player >= 0)
            named.insert(QString::number(p.where.player));
    const QStringList problems = filtered(q, f);
    EXPECT_EQ(QSet<QString>(problems.begin(), problems.end()), named);
    EXPECT_TRUE(named.contains("7")) << "a player in no club is a problem";
    EXPECT_LT(named.size(), 8);
}

TEST(PlayerList, SortsReadsWindowsAndFollowsTheWorld)
{
    test::PlayersWorld w;
    SearchIndex &index = SearchIndex::of(*w.world);
    PlayerQuery q(*w.world, index);
    q.setsort(ListColumn::Staerke, true);
    PlayerFilter f;
    f.freie = false;
    q.setfilter(f);
    EXPECT_EQ(keys(q), QStringList({"3", "2", "8", "1", "4", "5", "6", "7"}));
    q.setsort(ListColumn::Verein);
    EXPECT_EQ(keys(q), QStringList({"1", "3", "2", "6", "5", "4", "8", "7"})) << "FC Köln, Santos FC, Transfermarkt, vereinslos";

    const QList<PlayerRow> window = q.rows(6, 5);
    ASSERT_EQ(window.size(), 2);
    EXPECT_EQ(window[0].verein, "Transfermarkt");
    EXPECT_EQ(window[0].vereinNr, 0);
    EXPECT_EQ(window[1].verein, "vereinslos");
    EXPECT_EQ(window[1].kontinent, "West-Europa");
    EXPECT_EQ(window[1].staerke.toLongLong(), 1000);
    q.setfilter({});
    q.setsort(ListColumn::Nummer);
    const PlayerRow free = q.rows(0, 1)[0];
    EXPECT_TRUE(free.frei);
    EXPECT_EQ(free.verein, "Freie Spieler");
    EXPECT_TRUE(free.maxstaerke.isNull());

    // A run moves player 7 into a club and renames him: count and rows follow.
    w.world->run([](Database &db) {
        db.exec("INSERT INTO vereinspieler VALUES (11, 7); UPDATE spieler SET NAME = 'Zander' WHERE NUMMER = 7");
        return Result::success();
    });
    f = {};
    f.ohneVerein = true;
    q.setfilter(f);
    EXPECT_EQ(q.count(), 0);
    f = {};
    f.text = "zander";
    q.setfilter(f);
    ASSERT_EQ(q.rows(0, 10).size(), 1);
    EXPECT_EQ(q.rows(0, 10)[0].verein, "Santos FC");
    EXPECT_EQ(q.numbers(), QList<qint64>{7});
}

// The list keeps each player's place in German order as a number, placed
// anew as names change: it sorts as the collation does after every kind of run.
TEST(PlayerList, KeepsGermanOrderAsNamesChange)
{
    test::PlayersWorld w;
    PlayerQuery q(*w.world, SearchIndex::of(*w.world));
    const auto collated = [&] {
        return numbersof(w.db(), "SELECT frei, nummer FROM (SELECT 0 AS frei, NUMMER AS nummer, NAME AS name, VORNAME AS "
                                 "vorname FROM spieler UNION ALL SELECT 1, id, name, vorname FROM a4spieler) ORDER BY name "
                                 "COLLATE deutsch, vorname COLLATE deutsch, frei, nummer");
    };
    const auto run = [&](const char *sql) {
        runsql(*w.world, sql);
        EXPECT_EQ(keys(q), collated()) << sql;
    };
    EXPECT_EQ(keys(q), collated());
    run("UPDATE spieler SET NAME = 'Aal' WHERE NUMMER = 5; UPDATE spieler SET NAME = 'Zz' WHERE NUMMER = 7");
    run("UPDATE spieler SET NAME = 'Muller', VORNAME = 'Thomas' WHERE NUMMER = 2");     // beside Müller, case and accent break the tie
    run("UPDATE spieler SET NAME = 'müller', VORNAME = NULL WHERE NUMMER = 4");
    run("INSERT INTO spieler (NUMMER, NAME, VORNAME) VALUES (20, 'Müller', 'Thomas'), (21, NULL, 'Ohne')");
    run("DELETE FROM spieler WHERE NUMMER = 3");
    run("INSERT INTO a4spieler (name, vorname) VALUES ('Müller', 'Thomas'), ('Ärger', 'Ändi')");
    run("DELETE FROM a4spieler WHERE name = 'Freimann'");
    // Many players at one spot, more than fit between two neighbours.
    std::string many = "INSERT INTO spieler (NUMMER, NAME, VORNAME) VALUES ";
    for (int i = 0; i < 40; ++i)
        many += (i ? ", (" : "(") + std::to_string(100 + i) + ", 'Müller', 'Thomas')";
    run(many.c_str());
    PlayerFilter f;
    f.text = "mu";
    q.setfilter(f);
    EXPECT_EQ(keys(q), QStringList(collated().filter(QRegularExpression("^(F1|F2|1|2|4|20|1\\d\\d)$"))));
}

// The order built a piece at a time while the world changes under it, as
// the editor builds it in idle time: names changed in rows already read
// are placed anew when it is done.
TEST(PlayerList, OrderBuiltInPiecesFollowsChanges)
{
    test::PlayersWorld w;
    SearchIndex::of(*w.world); // the folding function on the connection
    PlayerRank rank(w.db());
    QObject::connect(w.world.get(), &World::changed, [&](const Change &c) { rank.update(c); });
    const auto order = [&](const char *sql) { return numbersof(w.db(), QString::fromUtf8(sql)); };
    const auto run = [&](const char *sql) { runsql(*w.world, sql); };
    EXPECT_FALSE(rank.buildstep(0)); // the squads' players read
    run("UPDATE spieler SET NAME = 'Aal' WHERE NUMMER = 5; DELETE FROM spieler WHERE NUMMER = 3");
    EXPECT_FALSE(rank.buildstep(0)); // the free players read
    run("INSERT INTO spieler (NUMMER, NAME, VORNAME) VALUES (20, 'Müller', 'Thomas'); UPDATE a4spieler SET name = 'Zander'");
    EXPECT_FALSE(rank.buildstep(0));
    rank.ensure();
    EXPECT_TRUE(rank.built());
    const QStringList collated =
        order("SELECT frei, nummer FROM (SELECT 0 AS frei, NUMMER AS nummer, NAME AS name, VORNAME AS vorname FROM spieler "
              "UNION ALL SELECT 1, id, name, vorname FROM a4spieler) ORDER BY name COLLATE deutsch, vorname COLLATE deutsch, frei, nummer");
    EXPECT_EQ(order("SELECT frei, nummer FROM temp.suche_rang ORDER BY rang"), collated);
    // Each row holds its player's names as they are now, and their folded text.
    EXPECT_EQ(order("SELECT r.frei, r.nummer FROM temp.suche_rang r LEFT JOIN spieler s ON r.frei = 0 AND s.NUMMER = r.nummer "
                    "LEFT JOIN a4spieler a ON r.frei = 1 AND a.id = r.nummer "
                    "WHERE r.name IS NOT coalesce(s.NAME, a.name) OR r.vorname IS NOT coalesce(s.VORNAME, a.vorname) "
                    "OR r.text IS NOT suchtext(coalesce(r.vorname, '') || ' ' || coalesce(r.name, ''))"),
              QStringList());
}

TEST(PlayerList, FilterExpressionAndStars)
{
    QString error;
    const std::optional<PlayerFilter> f =
        parsefilter("land=Brasilien; position=STU; sterne<2,5; verein=#11; text=zé; ohneverein; doppelt; problem; ohnefreie", &error);
    ASSERT_TRUE(f) << error.toStdString();
    EXPECT_EQ(f->land, "Brasilien");
    EXPECT_EQ(f->position, 3);
    EXPECT_EQ(f->staerkeBis, 4999);
    EXPECT_FALSE(f->staerkeVon);
    EXPECT_EQ(f->verein, 11);
    EXPECT_EQ(f->text, "zé");
    EXPECT_TRUE(f->ohneVerein && f->doppelteNummer && f->problem && !f->freie);
    EXPECT_EQ(parsefilter(filterexpression(*f), &error), f) << "a named filter is kept as its expression";
    EXPECT_EQ(parsefilter("sterne>=1,5;sterne<=3", &error)->staerkeVon, 3000);
    EXPECT_EQ(parsefilter("verein=Transfermarkt", &error)->verein, 0);
    EXPECT_EQ(parsefilter("verein=FC Köln", &error)->vereinName, "FC Köln");
    // Values with ";" and quotes are kept whole; filters kept before stay as they were.
    PlayerFilter odd;
    odd.vereinName = "FC; Test";
    odd.text = "\"Bola\"; Jr.";
    odd.land = " Land ";
    odd.position = 3;
    EXPECT_EQ(parsefilter(filterexpression(odd), &error), odd) << filterexpression(odd).toStdString();
    EXPECT_EQ(parsefilter("text=\"Bola; land=Brasilien", &error)->land, "Brasilien") << "an unclosed quote as before";
    EXPECT_EQ(parsefilter("text=\"Bola; land=Brasilien", &error)->text, "\"Bola");
    EXPECT_EQ(parsefilter("verein=Zé \"Bola\"; position=Sturm", &error)->vereinName, "Zé \"Bola\"");

    EXPECT_FALSE(parsefilter("farbe=rot", &error));
    EXPECT_TRUE(error.contains("farbe")) << error.toStdString();
    EXPECT_FALSE(parsefilter("sterne<drei", &error));
    EXPECT_TRUE(error.contains("drei"));
    EXPECT_FALSE(parsefilter("position=Libero", &error));

    EXPECT_EQ(starstext(2500), "1,25");
    EXPECT_EQ(starstext(7000), "3,5");
    EXPECT_EQ(starstext(6000), "3");
    EXPECT_EQ(starstext(4751), "2,3755");
    EXPECT_EQ(parsestars("1,25"), 2500);
    EXPECT_EQ(parsestars("3,5 Sterne"), 7000);
    EXPECT_EQ(parsestars(" 3.5 "), 7000);
    EXPECT_EQ(parsestars("2,3755"), 4751);
    EXPECT_EQ(parsestars("2,37550"), 4751);
    EXPECT_FALSE(parsestars("1,00025")) << "no whole unit";
    EXPECT_FALSE(parsestars("3,5x"));
    EXPECT_FALSE(parsestars(""));
    EXPECT_EQ(countline(4312, 101700), "4.312 von 101.700 Spielern");
}
