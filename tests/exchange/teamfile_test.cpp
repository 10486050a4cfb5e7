#include "exchange/teamfile.h"
#include "exchange/teamfileopen.h"
#include "platform/codepage.h"
#include "support/qstringprint.h"
#include "worldfixture.h"

using namespace zorbo;
using namespace zorbo::test;

namespace {

// Club 12 of Deutschland with players 30 and 31 and a third player who
// belongs to another club; club.tea holds club 12 as saved.
struct TeamFile : ::testing::Test {
    TestDb t;
    void SetUp() override
    {
        t->exec("INSERT INTO vereine_national (NUMMER, NAME) VALUES (1, 'Deutschland'), (2, 'Österreich')");
        t->exec("INSERT INTO vereine VALUES (12, 'SV Süd', 'Süd', 5, 0.5, NULL, '', 'Platz', 'Groß Ort', 'Deutschland', 100, "
                "200, 1, 70, 10, 0, ' 24,181,220', 'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', 'j', 'k=;l')");
        t->exec("INSERT INTO spieler VALUES (30, 'Maß', 'Jürgen', 8000, 10000, 'Deutschland', 180, 2, 100, 0.5, 0, 9, 14, 1, "
                "3, '0,5', ''), (31, 'Zwei', 'Z.', 0, 0, 'Österreich', 170, 1, 50, 0, -1.25, 4, 0, 0, 0, '', '7'), "
                "(32, 'Fremd', 'F.', 0, 0, 'X', 170, 1, 50, 0, 0, 4, 0, 0, 0, '', '')");
        t->exec("INSERT INTO vereinspieler VALUES (12, 30), (12, 31), (13, 32)");
        ASSERT_TRUE(exportverein(*t, t.file("club.tea"), 12).ok());
    }
};

} // namespace

TEST_F(TeamFile, SavedFileHoldsTeamAndSquadInProfileForm)
{
    const ExchangeResult r = exportverein(*t, t.file("club.tea"), 12, {}, exportTime());
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    const QString expected =
        ";Datenexport vom 19.11.2026 06:36:12\r\n;Zorbo Editor v2.0 Copyright (C) 2026 the Zorbo Editor contributors, "
        "licensed under the GNU LGPL 2.1 or later\r\n\r\n[Team]\r\nNUMMER=12\r\nNAME=SV Süd\r\nKURZNAME=Süd\r\nGRAFIK_NR=5\r\n"
        "STAERKE=0,5\r\nSTARTPLATZ=\r\nSPIELER=\r\nSTADION_NAME=Platz\r\nSTADT=Groß Ort\r\nNATION=Deutschland\r\n"
        "STADION_SITZPL=100\r\nSTADION_STEHPL=200\r\nTRIKOT_ART=1\r\nTW_TRIKOT_ART=70\r\nAUSWEICH_TRIKOT_ART=10\r\n"
        "AUSWEICH_TW_TRIKOT_ART=0\r\nF_TRIKOT_SPIELER=\" 24,181,220\"\r\nF_AUSW_TRIKOT_SPIELER=a\r\nF_ALTERN_TRIKOT_SPIELER=b\r\n"
        "F_HOSE_SPIELER=c\r\nF_AUSW_HOSE_SPIELER=d\r\nF_ALTERN_HOSE_SPIELER=e\r\nF_TRIKOT_WERBUNG=f\r\nF_HOSE_STREIFEN=g\r\n"
        "F_TRIKOT_TORWART=h\r\nF_HOSE_TORWART=i\r\nF_TRIKOT_TRAINER=j\r\nF_HOSE_TRAINER=k=;l\r\n"
        "[Spieler1]\r\nNUMMER=30\r\nNAME=Maß\r\nVORNAME=Jürgen\r\nStaerke=8000\r\nMax_Staerke=10000\r\nNATION=Deutschland\r\n"
        "GROESSE=180\r\nART=2\r\nREST_EINSÄTZE=100\r\nLIEBLINGSPOS_X=0,5\r\nLIEBLINGSPOS_Y=0\r\nRUECKENNUMMER=9\r\nGESICHT=14\r\n"
        "HAUTFARBE=1\r\nHAARFARBE=3\r\nERLERNT=0,5\r\nGESPERRT=\r\n[Spieler2]\r\nNUMMER=31\r\n";
    const QByteArray bytes = readBytes(t.file("club.tea"));
    EXPECT_TRUE(bytes.startsWith(*toCp1252(expected))) << bytes.toStdString();
    EXPECT_EQ(bytes.count("[Spieler"), 2);
    EXPECT_TRUE(bytes.endsWith("GESPERRT=7\r\n"));
    EXPECT_TRUE(bytes.contains("\r\nLIEBLINGSPOS_Y=-1,25\r\n")) << "numbers as a German system writes them";

    EXPECT_FALSE(exportverein(*t, t.file("none.tea"), 99).ok());
    EXPECT_FALSE(QFile::exists(t.file("none.tea")));
}

TEST_F(TeamFile, ReplacingKeepsNumbersAndOrderAndTakesTheFileNation)
{
    // The same file back over the same club changes nothing: texts with
    // blanks at either end or in quotes go out quoted once more and come
    // back as they were (" 24,181,220").
    t->exec("UPDATE vereine SET STADT = ' Groß Ort ', KURZNAME = '\"Süd\"' WHERE NUMMER = 12");
    t->exec("UPDATE spieler SET VORNAME = 'Jürgen  ' WHERE NUMMER = 30");
    ASSERT_TRUE(exportverein(*t, t.file("club.tea"), 12).ok());
    const QString before = dumpWorld(*t);
    ExchangeResult r = openteamreplace(*t, t.file("club.tea"), 12);
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(dumpWorld(*t), before);

    // The replacement goes by squad order: with 31 first in the squad he
    // takes [Spieler1], and 30 the defaults, as the file has no [Spieler2].
    t->exec("DELETE FROM vereinspieler WHERE verein = 12; INSERT INTO vereinspieler VALUES (12, 31), (12, 30)");
    QByteArray file = readBytes(t.file("club.tea"));
    file = file.left(file.indexOf("[Spieler2]"));
    writeBytes(t.file("one.tea"), *toCp1252(fromCp1252(file).replace("NATION=Deutschland\r\nSTADION", "NATION=Österreich\r\nSTADION")));
    r = openteamreplace(*t, t.file("one.tea"), 12);
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(t->scalar("SELECT NATION FROM vereine WHERE NUMMER = 12").toString(), "Österreich");
    EXPECT_EQ(t->scalar("SELECT NAME || '/' || RUECKENNUMMER FROM spieler WHERE NUMMER = 31").toString(), "Maß/9");
    EXPECT_EQ(t->scalar("SELECT '[' || NAME || ']/' || RUECKENNUMMER || '/' || GROESSE || '/' || Stärke FROM spieler WHERE NUMMER = 30")
                  .toString(),
              "[]/1/0/0");
    EXPECT_EQ(t->scalar("SELECT group_concat(spieler) FROM vereinspieler WHERE verein = 12").toString(), "31,30");

    // Saved with the squad in that order and opened over the same club, every
    // player keeps his own data.
    ASSERT_TRUE(exportverein(*t, t.file("again.tea"), 12).ok());
    const QString reordered = dumpWorld(*t);
    ASSERT_TRUE(openteamreplace(*t, t.file("again.tea"), 12).ok());
    EXPECT_EQ(dumpWorld(*t), reordered);

    EXPECT_FALSE(openteamreplace(*t, t.file("club.tea"), 1).ok()) << "a national team cannot be replaced";
}

TEST_F(TeamFile, NewClubGetsNewNumbersAndExactlyTwentyPlayers)
{
    const ExchangeResult r = openteamnew(*t, t.file("club.tea"), "Österreich");
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(r.team, 13);
    EXPECT_EQ(t->scalar("SELECT NAME || '/' || NATION || '/' || F_TRIKOT_SPIELER || '/' || typeof(STARTPLATZ) FROM vereine "
                        "WHERE NUMMER = 13").toString(),
              "SV Süd/Österreich/ 24,181,220/null");
    EXPECT_EQ(t->scalar("SELECT group_concat(spieler) FROM vereinspieler WHERE verein = 13 AND spieler > 32").toString(),
              "33,34,35,36,37,38,39,40,41,42,43,44,45,46,47,48,49,50,51,52");
    EXPECT_EQ(t->scalar("SELECT NAME || '/' || NATION || '/' || Stärke FROM spieler WHERE NUMMER = 34").toString(), "Zwei/Österreich/0");
    EXPECT_EQ(t->scalar("SELECT count(*) FROM spieler WHERE NUMMER > 34 AND NAME = '' AND RUECKENNUMMER = 1").toInt(), 18);
}

TEST_F(TeamFile, BrokenFilesChangeNothing)
{
    const QString before = dumpWorld(*t);
    QByteArray file = readBytes(t.file("club.tea"));
    writeBytes(t.file("bad.tea"), QByteArray(file).replace("GROESSE=170", "GROESSE=gross"));
    ExchangeResult r = openteamnew(*t, t.file("bad.tea"), "Deutschland");
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.result.message.contains("Zeile 58: [Spieler2] GROESSE")) << r.result.message.toStdString();
    writeBytes(t.file("bad.tea"), "[Verein]\r\nNAME=x\r\n");
    r = openteamreplace(*t, t.file("bad.tea"), 12);
    EXPECT_TRUE(r.result.message.contains("fehlt der Abschnitt [Team]")) << r.result.message.toStdString();
    writeBytes(t.file("bad.tea"), QByteArray("[Team]\0\1\2", 9));
    EXPECT_TRUE(openteamreplace(*t, t.file("bad.tea"), 12).result.message.contains("keine Textdatei"));
    EXPECT_FALSE(openteamnew(*t, t.file("club.tea"), "Atlantis").ok());
    // The team rules of every save: a name, and a club country.
    writeBytes(t.file("bad.tea"), QByteArray(file).replace("NAME=SV S\xfc" "d", "NAME= "));
    for (const ExchangeResult &blank : {openteamnew(*t, t.file("bad.tea"), "Deutschland"), openteamreplace(*t, t.file("bad.tea"), 12)}) {
        EXPECT_FALSE(blank.ok());
        EXPECT_TRUE(blank.result.message.contains("bad.tea, Zeile 6: [Team] NAME: Das Feld »Teamname lang« ist leer"))
            << blank.result.message.toStdString();
    }
    writeBytes(t.file("bad.tea"), QByteArray(file).replace("NATION=Deutschland", "NATION="));
    r = openteamreplace(*t, t.file("bad.tea"), 12);
    EXPECT_TRUE(r.result.message.contains("bad.tea, Zeile 14: [Team] NATION: Das Feld »Land« ist leer")) << r.result.message.toStdString();
    EXPECT_EQ(dumpWorld(*t), before);
}

TEST_F(TeamFile, ValuesBeyondStorageAreRefusedAndValuesBeyondTheWindowsKept)
{
    const QString before = dumpWorld(*t);
    const QByteArray file = readBytes(t.file("club.tea"));
    struct Case {
        QByteArray from, to;
        const char *expected; // part of the refusal; empty when the value is kept
        const char *query = nullptr, *stored = nullptr;
    };
    const Case cases[] = {
        {"Staerke=8000", "Staerke=99999999999",
         "Zeile 37: [Spieler1] Staerke = »99999999999«; erlaubt sind -2147483648 bis 2147483647"},
        {"NAME=SV S", "NAME=" + QByteArray(250, 'n') + "SV S",
         "Zeile 6: [Team] NAME: ein Text von 256 Zeichen; gespeichert werden höchstens 255"},
        {"GRAFIK_NR=5", "GRAFIK_NR=1000", "", "SELECT GRAFIK_NR FROM vereine WHERE NUMMER = 12", "1000"},
        {"STADION_SITZPL=100", "STADION_SITZPL=-5", "", "SELECT STADION_SITZPL FROM vereine WHERE NUMMER = 12", "-5"},
        {"\r\nART=1\r\n", "\r\nART=3,5\r\n", "", "SELECT ART FROM spieler WHERE NUMMER = 31", "4"},
        {"Staerke=8000", "Staerke=12500", "", "SELECT \"Stärke\" FROM spieler WHERE NUMMER = 30", "12500"},
        {"NAME=SV S", "NAME=" + QByteArray(40, 'n') + "SV S", "",
         "SELECT length(NAME) FROM vereine WHERE NUMMER = 12", "46"},
    };
    for (const Case &c : cases) {
        ASSERT_TRUE(file.contains(c.from)) << c.from.toStdString();
        writeBytes(t.file("bad.tea"), QByteArray(file).replace(c.from, c.to));
        const ExchangeResult r = openteamreplace(*t, t.file("bad.tea"), 12);
        if (!*c.expected) {
            ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
            EXPECT_TRUE(r.result.message.endsWith("1 Wert außerhalb der Fensterbereiche behalten, siehe Probleme"))
                << r.result.message.toStdString();
            EXPECT_EQ(t->scalar(c.query).toString(), c.stored) << c.to.toStdString();
            continue;
        }
        EXPECT_FALSE(r.ok()) << c.to.toStdString();
        EXPECT_TRUE(r.result.message.contains(QString::fromUtf8(c.expected))) << r.result.message.toStdString();
        EXPECT_TRUE(r.result.message.contains("bad.tea")) << r.result.message.toStdString();
        EXPECT_EQ(dumpWorld(*t), before) << c.to.toStdString();
    }
}

TEST_F(TeamFile, FilesFarBeyondATeamAreRefusedWhole)
{
    // No team file of the game comes near a megabyte; 1.8 million short lines
    // are refused before anything is parsed.
    QByteArray file = readBytes(t.file("club.tea"));
    writeBytes(t.file("huge.tea"), file + "[Rest]\r\n" + QByteArray("x=1\r\n").repeated(250000));
    const ExchangeResult r = openteamnew(*t, t.file("huge.tea"), "Deutschland");
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.result.message.contains("zu groß")) << r.result.message.toStdString();
}
