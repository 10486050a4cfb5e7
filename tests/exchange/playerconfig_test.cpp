#include "core/market.h"
#include "exchange/configruns.h"
#include "exchange/playerconfig.h"
#include "platform/codepage.h"
#include "support/qstringprint.h"
#include "worldfixture.h"

#include <QDir>
#include <QFile>

using namespace zorbo;
using namespace zorbo::test;

namespace {

void addPlayer(Database &db, const QVariantList &v)
{
    Statement st = db.prepare("INSERT INTO spieler VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
    for (int i = 0; i < v.size(); ++i)
        st.bind(i + 1, v[i]);
    st.exec();
}

void buildWorkedExample(Database &db)
{
    addPlayer(db, {7001, "Beispiel", "S.", 8000, 10000, "Deutschland", 180, 2, 100, 0.0, 0.0, 9, 14, 1, 3, "", ""});
    addPlayer(db, {7002, "Müßig \"der Bär\"", "Jörg", 4750, 12000, "Österreich", 191, 0, 12, 0.5, -1.25, 1, 230431, 2, 4,
                   "0,5,17", "52"});
}

} // namespace

TEST(PlayerConfig, WriterGivesTheWorkedExampleByteForByteAndReaderTakesItBack)
{
    TestDb t;
    buildWorkedExample(*t);
    const ExchangeResult r = exportspieler(*t, t.file("1_sp.cfg"), {}, exportTime());
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(r.players, 2);
    EXPECT_EQ(readBytes(t.file("1_sp.cfg")), readBytes(dataPath("sp_cfg/worked-example/1_sp.cfg")));
    // A stop before the last player leaves the file as it was and nothing beside it.
    writeBytes(t.file("1_sp.cfg"), "alt");
    const ExchangeResult stopped = exportspieler(*t, t.file("1_sp.cfg"), [](qint64 done, qint64 total) { return done < total; });
    EXPECT_TRUE(stopped.result.cancelled);
    EXPECT_EQ(readBytes(t.file("1_sp.cfg")), "alt");
    EXPECT_EQ(QDir(t.dir.path()).entryList({"1_sp.cfg*"}, QDir::Files), QStringList({"1_sp.cfg"}));

    TestDb back;
    back->exec("INSERT INTO vereinspieler VALUES (5, 7001)");
    const ExchangeResult in = importplayersrun(*back, dataPath("sp_cfg/worked-example/1_sp.cfg"));
    ASSERT_TRUE(in.ok()) << in.result.message.toStdString();
    EXPECT_TRUE(in.marketCreated) << "the market rule holds after a player import too";
    back->exec("DELETE FROM vereine; DELETE FROM vereinspieler WHERE verein = 0; DELETE FROM spieler WHERE NUMMER > 7002");
    t->exec("INSERT INTO vereinspieler VALUES (5, 7001)");
    EXPECT_EQ(dumpWorld(*back), dumpWorld(*t)) << "squads are not touched by a player import";
}

// A record in the writer's layout, LF line ends, ERLERNT "1,2", GESPERRT "3".
QByteArray record(int number, const char *name)
{
    const char *keys[] = {"NUMMER", "NAME", "VORNAME", "STÄRKE", "MAX_STÄRKE", "NATION", "GROESSE", "ART", "REST_EINSÄTZE",
                          "LIEBLINGSPOS_X", "LIEBLINGSPOS_Y", "RUECKENNUMMER", "GESICHT", "HAUTFARBE", "HAARFARBE",
                          "ERLERNT", "GESPERRT"};
    const QStringList values = {QString::number(number), QStringLiteral("\"%1\"").arg(name), "\"V\"", "1", "2", "\"X\"",
                                "180", "3", "4", ".5", "6", "7", "8", "9", "10", "1,2", "3"};
    QString out = "NEUER_SPIELER\n";
    for (int i = 0; i < 17; ++i)
        out += "        " + QString::fromUtf8(keys[i]) + " " + values[i] + "\n";
    return *toCp1252(out);
}

TEST(PlayerConfig, RecordsArePositionalAndDuplicatesAreReported)
{
    QByteArray file = "; Kopf\n\nLETZTER_SPIELER 9\n" + record(4, "Erster") + "\n\n\n" + record(4, "Zweiter")
        + record(5, "Dritter").replace("        GESPERRT 3", "\n        GESPERRT 3");
    // A line without its keyword gives the text from one before the keyword's length.
    file.replace("        GROESSE 180\n", "xxxxxx191\n");
    // An empty line inside a record is its GESPERRT; the real one then lies outside.
    file.chop(1); // no final line end
    TestDb t;
    writeBytes(t.file("sp.cfg"), file);
    const ExchangeResult r = importspieler(*t, t.file("sp.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(r.players, 2);
    EXPECT_EQ(t->scalar("SELECT group_concat(NUMMER || ':' || NAME || ':' || GROESSE || ':' || LIEBLINGSPOS_X || ':' || "
                        "ERLERNT || ':' || GESPERRT, ' ') FROM spieler").toString(),
              "4:Erster:191:0.5:1,2:3 5:Dritter:191:0.5:1,2:");
    ASSERT_EQ(r.findings.size(), 1);
    EXPECT_EQ(r.findings[0].player, 4);
    EXPECT_EQ(r.findings[0].line, 25);
}

TEST(PlayerConfig, NumbersOfEveryRangeAreToldApartWhenRepeatedAndWhenLeftOut)
{
    // Small numbers and numbers up to the largest a file may hold, each once
    // and some twice; the world's players the file leaves out go.
    const qint64 numbers[] = {0, 63, 64, 67108863, 67108864, 2147483647, 64, 67108864, 2147483647, 0};
    QByteArray file = "LETZTER_SPIELER 2147483647\n";
    for (qint64 n : numbers)
        file += record(int(n), "Neu");
    // A value's line may start with a tab, and its keyword stand in the value again.
    file.replace("        NAME \"Neu\"\n", "\tNAME \"NAME Neu\"\n");
    TestDb t;
    for (qint64 kept : {64LL, 2147483647LL, 5LL, 99999999LL})
        addPlayer(*t, {kept, "Alt", "S.", 1, 1, "X", 180, 0, 0, 0.0, 0.0, 0, 0, 0, 0, "", ""});
    writeBytes(t.file("sp.cfg"), file);
    const ExchangeResult r = importspieler(*t, t.file("sp.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(r.players, 6);
    EXPECT_EQ(t->scalar("SELECT group_concat(NUMMER || ':' || NAME, ' ') FROM (SELECT * FROM spieler ORDER BY NUMMER)")
                  .toString(),
              "0:NAME Neu 63:NAME Neu 64:NAME Neu 67108863:NAME Neu 67108864:NAME Neu 2147483647:NAME Neu");
    QList<qint64> repeated;
    for (const Finding &f : r.findings)
        repeated << f.player;
    EXPECT_EQ(repeated, (QList<qint64>{64, 67108864, 2147483647, 0}));
}

// Players go to the database many at a time; whole batches, the rows left
// at the end and a repeated number between them all come out as the file has them.
TEST(PlayerConfig, AFileOfManyPlayersIsReadAsItStandsAndAgainChangesNothing)
{
    QByteArray file;
    QStringList expected;
    for (int n = 1; n <= 200; ++n) {
        const QString name = n % 10 == 0 ? QString() : QStringLiteral("Müßig-%1").arg(n);
        // The first of a number stays: 65 comes early, ending the first batch.
        if (n == 64)
            file += record(65, "Früher");
        file += record(n, name.toUtf8().constData());
        expected << QStringLiteral("%1:%2:text").arg(n).arg(n == 65 ? QStringLiteral("Früher") : name);
    }
    TestDb t;
    addPlayer(*t, {3, "Müßig-3", "V", 1, 2, "X", 180, 3, 4, 0.5, 6.0, 7, 8, 9, 10, "1,2", "3"});
    addPlayer(*t, {999, "Geht", "V", 1, 2, "X", 180, 3, 4, 0.5, 6.0, 7, 8, 9, 10, "", ""});
    writeBytes(t.file("sp.cfg"), file);
    const qint64 before = t->totalChanges();
    const ExchangeResult r = importspieler(*t, t.file("sp.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(r.players, 200);
    EXPECT_EQ(t->totalChanges() - before, 199 + 1) << "player 3 stands as the file has him; 999 goes";
    ASSERT_EQ(r.findings.size(), 1);
    EXPECT_EQ(r.findings[0].player, 65);
    QStringList stored;
    Statement st = t->prepare("SELECT NUMMER, NAME, typeof(NAME), ERLERNT, LIEBLINGSPOS_X FROM spieler ORDER BY NUMMER");
    while (st.step()) {
        stored << QStringLiteral("%1:%2:%3").arg(st.integer(0)).arg(st.text(1), st.text(2));
        EXPECT_EQ(st.text(3), "1,2");
        EXPECT_EQ(st.real(4), 0.5);
    }
    EXPECT_EQ(stored, expected);
    const qint64 again = t->totalChanges();
    ASSERT_TRUE(importspieler(*t, t.file("sp.cfg")).ok());
    EXPECT_EQ(t->totalChanges(), again);
}

TEST(PlayerConfig, TruncatedRecordChangesNothing)
{
    TestDb t;
    t->exec("INSERT INTO spieler (NUMMER, NAME) VALUES (99, 'bleibt')");
    const QString before = dumpWorld(*t);
    const QByteArray whole = record(1, "A") + record(2, "B");
    writeBytes(t.file("sp.cfg"), whole.left(whole.lastIndexOf("        ART")));
    const ExchangeResult r = importplayersrun(*t, t.file("sp.cfg"));
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.result.message.contains("Zeile 19")) << r.result.message.toStdString();
    EXPECT_TRUE(r.result.message.contains("7 von 17")) << r.result.message.toStdString();
    EXPECT_EQ(dumpWorld(*t), before);
}

TEST(PlayerConfig, WhatTheFileCannotHoldIsNotExported)
{
    TestDb t;
    addPlayer(*t, {1, "A", "B", 0, 0, "X", QVariant(), 0, 0, 0.0, 0.0, 1, 0, 0, 0, QVariant(), ""});
    const ExchangeResult r = exportspieler(*t, t.file("1_sp.cfg"));
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.result.message.contains("Spieler 1, Feld GROESSE")) << r.result.message.toStdString();
    EXPECT_FALSE(QFile::exists(t.file("1_sp.cfg")));

    t->exec("UPDATE spieler SET GROESSE = 180, VORNAME = 'Zwei\nZeilen'");
    EXPECT_TRUE(exportspieler(*t, t.file("1_sp.cfg")).result.message.contains("Spieler 1, Feld VORNAME: ein Zeilenumbruch"));
    t->exec("UPDATE spieler SET VORNAME = 'Ωmega'");
    EXPECT_TRUE(exportspieler(*t, t.file("1_sp.cfg")).result.message.contains("Spieler 1, Feld VORNAME: das Zeichen »Ω«"));
}
