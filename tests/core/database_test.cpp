#include "core/gamedb.h"
#include "core/market.h"
#include "core/schema.h"
#include "core/generator.h"
#include "support/testsupport.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::NewWorld;
using zorbo::test::TempFolder;

TEST(Schema, ForeignFilesAreNeverTouched)
{
    TempFolder dir;
    const QString access = dir.file("zorbo.mdb");
    const QByteArray jet = QByteArray("\x00\x01\x00\x00Standard Jet DB", 19) + QByteArray(200, 'x');
    zorbo::test::writeBytes(access, jet);
    OpenedDb o = opendb(access);
    EXPECT_EQ(o.state, DbOpenState::Foreign);
    EXPECT_EQ(o.db, nullptr);
    EXPECT_TRUE(o.message.contains(access));
    EXPECT_EQ(zorbo::test::readBytes(access), jet);

    // Ours opens again as it is.
    NewWorld w;
    w.db().run("INSERT INTO vereine (NUMMER, NAME) VALUES (5, ?1)", QString("Verein \"Blau-Weiß\""));
    const QString path = w.db().path();
    w.opened = {};
    OpenedDb again = opendb(path);
    ASSERT_EQ(again.state, DbOpenState::Opened);
    EXPECT_EQ(again.db->scalar("SELECT NAME FROM vereine WHERE NUMMER = 5").toString(), "Verein \"Blau-Weiß\"");
}

TEST(Schema, OnlyAMissingOrEmptyFileBecomesANewWorld)
{
    TempFolder dir;
    // SQLite files of another program, with tables of their own or none.
    const QString viewOnly = dir.file("sicht.mdb");
    const QString versionOnly = dir.file("version.mdb");
    const QString other = dir.file("andere.mdb");
    {
        Database db(viewOnly);
        db.exec("CREATE VIEW eins AS SELECT 1 AS x");
        Database version(versionOnly);
        version.exec("PRAGMA user_version = 3");
        Database notes(other);
        notes.exec("CREATE TABLE notizen (text TEXT); INSERT INTO notizen VALUES ('bleibt')");
    }
    for (const QString &path : {viewOnly, versionOnly, other}) {
        const QByteArray before = zorbo::test::readBytes(path);
        ASSERT_FALSE(before.isEmpty());
        const OpenedDb o = opendb(path);
        EXPECT_EQ(o.state, DbOpenState::Foreign) << path.toStdString();
        EXPECT_EQ(o.db, nullptr);
        EXPECT_TRUE(o.message.contains(path));
        EXPECT_EQ(zorbo::test::readBytes(path), before);
    }

    const QString empty = dir.file("leer.mdb");
    zorbo::test::writeBytes(empty, {});
    EXPECT_EQ(opendb(empty).state, DbOpenState::Created);
}

TEST(Schema, ValuesThatDoNotFitTheirColumnAreRefused)
{
    NewWorld w;
    EXPECT_THROW(w.db().run("INSERT INTO vereine (NUMMER, STADION_SITZPL) VALUES (1, ?1)", QString("viele")), DbError);
    EXPECT_EQ(w.db().scalar("SELECT count(*) FROM vereine").toInt(), 0);
}

TEST(Generator, SquadsContinueTheNumbersWithPositionsAndSquadNumbers)
{
    NewWorld w;
    EXPECT_EQ(newplayernumber(w.db()), 0);
    EXPECT_EQ(newteamnumber(w.db()), 1);
    EXPECT_EQ(spieler20new(w.db(), 7, "Österreich", 20), 0);
    EXPECT_EQ(spieler20new(w.db(), 8, "Schweiz", 25), 20);

    Statement st = w.db().prepare("SELECT s.NUMMER, s.NATION, s.ART, s.RUECKENNUMMER, s.ERLERNT, v.verein "
                                  "FROM spieler s JOIN vereinspieler v ON v.spieler = s.NUMMER ORDER BY s.NUMMER");
    int perArt[4] = {};
    int row = 0;
    while (st.step()) {
        EXPECT_EQ(st.integer(0), row);
        EXPECT_EQ(st.text(1), row < 20 ? "Österreich" : "Schweiz");
        EXPECT_EQ(st.integer(3), (row < 20 ? row : row - 20) % 20 + 1);
        EXPECT_FALSE(st.isNull(4));
        EXPECT_EQ(st.integer(5), row < 20 ? 7 : 8);
        if (row < 20)
            ++perArt[st.integer(2)];
        ++row;
    }
    EXPECT_EQ(row, 45);
    EXPECT_EQ(QList<int>(perArt, perArt + 4), QList<int>({2, 6, 7, 5}));
    EXPECT_EQ(generatedposition(21), 0) << "the table repeats after 20";
    EXPECT_EQ(generatedposition(35), 3);
}

TEST(Generator, NumbersStayInTheGamesRangeAndTakeTheLowestFreeOnesAtTheTop)
{
    NewWorld w;
    w.db().run("INSERT INTO vereine (NUMMER, NAME) VALUES (1, 'a'), (2147483647, 'top')");
    w.db().run("INSERT INTO vereine_national (NUMMER, NAME) VALUES (2, 'b'), (4, 'c')");
    EXPECT_EQ(newteamnumber(w.db()), 3);
    w.db().run("INSERT INTO spieler (NUMMER) VALUES (0), (1), (3), (2147483646)");
    EXPECT_EQ(newplayernumbers(w.db(), 1), QList<qint64>{2147483647});
    w.db().run("INSERT INTO spieler (NUMMER) VALUES (2147483647)");
    EXPECT_EQ(newplayernumbers(w.db(), 4), (QList<qint64>{2, 4, 5, 6}));
    EXPECT_EQ(spieler20new(w.db(), 1, "X", 3), 2);
    EXPECT_EQ(w.db().scalar("SELECT group_concat(spieler) FROM vereinspieler WHERE verein = 1").toString(), "2,4,5");
}

TEST(Market, CreatedOnceWithItsPlayers)
{
    NewWorld w;
    EXPECT_TRUE(ensuretransfermarket(w.db()));
    EXPECT_FALSE(ensuretransfermarket(w.db()));
    EXPECT_EQ(w.db().scalar("SELECT count(*) FROM vereinspieler WHERE verein = 0").toInt(), 1700);
    EXPECT_EQ(w.db().scalar("SELECT NAME FROM vereine WHERE NUMMER = 0").toString(), "TRANSFERMARKT");
    EXPECT_EQ(newteamnumber(w.db()), 1);

    // A world whose market row went (a team import without it) gets it anew.
    w.db().exec("DELETE FROM vereine; DELETE FROM vereinspieler");
    EXPECT_TRUE(ensuretransfermarket(w.db()));
    EXPECT_EQ(w.db().scalar("SELECT min(spieler) FROM vereinspieler WHERE verein = 0").toInt(), 1700);
}

TEST(FreePlayers, ExactDuplicatesGoAndTheOldestStays)
{
    NewWorld w;
    EXPECT_TRUE(checka4(w.db()));
    Statement ins = w.db().prepare("INSERT INTO a4spieler (name, vorname, land, verein, position, staerke) "
                                   "VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    const auto add = [&](const QString &name, int staerke) {
        ins.bindAll(name, QString("K."), QString("Deutschland"), QString("Blau-Weiß"), 2, staerke);
        ins.exec();
    };
    add("Müller", 6000);
    add("Müller", 6000);
    add("Müller", 7000);
    add("Schmidt", 6000);
    add("Müller", 6000);
    EXPECT_EQ(a4deleteid(w.db()), 2);
    EXPECT_EQ(w.db().scalar("SELECT group_concat(id) FROM a4spieler").toString(), "1,3,4");
}

TEST(Transactions, NestedFailureLeavesNothingBehind)
{
    NewWorld w;
    try {
        Transaction outer(w.db());
        spieler20new(w.db(), 3, "Italien", 20);
        w.db().run("INSERT INTO spieler (NUMMER) VALUES (5)"); // taken: throws
        outer.commit();
    } catch (const DbError &) {
    }
    EXPECT_EQ(w.db().scalar("SELECT count(*) FROM spieler").toInt(), 0);
    EXPECT_EQ(w.db().scalar("SELECT count(*) FROM vereinspieler").toInt(), 0);
}
