// Text the game's code page can't hold goes out in its nearest letters when
// the user exports despite the problems, and each such text is told.
#include "exchange/playerconfig.h"
#include "exchange/teamconfigwriter.h"
#include "platform/codepage.h"
#include "platform/nearestletter.h"
#include "support/qstringprint.h"
#include "worldfixture.h"

using namespace zorbo;
using namespace zorbo::test;

TEST(NearestLetter, LettersOutsideTheCodePage)
{
    EXPECT_EQ(nearestcp1252("Łukasz Dvořák"), "Lukasz Dvorák") << "á is in the code page";
    EXPECT_EQ(nearestcp1252("Győző Bűcs"), "Gyözö Bücs");
    EXPECT_EQ(nearestcp1252("Ćirić łódź"), "Ciric lódz") << "ó is in the code page and stays";
    EXPECT_EQ(nearestcp1252("Müller Œ € Š"), "Müller Œ € Š") << "what the code page holds stays";
    EXPECT_EQ(nearestcp1252("東京 😀"), "?? ?");
    EXPECT_TRUE(fitsCp1252(nearestcp1252("ĀāĂăĄąĆćĈĉĊċČčĎďĒēĔĕĖėĘęĚěĜĝĞğĠġĢģĤĥĨĩĪīĬĭĮįİıĴĵĶķĹĺĻļĽľŃńŅņŇňŌōŎŏ")));
}

TEST(NearestLetter, ExportWritesNearestLettersAndTellsEachText)
{
    TestDb t;
    t->exec("INSERT INTO spieler VALUES (1, 'Łukasz', 'Ć.', 2000, 4000, 'Polska', 180, 0, 100, 0, 0, 1, 0, 0, 0, '', '')");
    t->exec("INSERT INTO spieler VALUES (2, 'Müller', 'T.', 2000, 4000, 'Deutschland', 180, 0, 100, 0, 0, 2, 0, 0, 0, '', '')");
    t->exec("INSERT INTO vereine (NUMMER, NAME, GRAFIK_NR) VALUES (0, 'Győr', 999)");
    const QString before = dumpWorld(*t);

    // Without the user's say the export stops at the first such text.
    EXPECT_FALSE(exportspieler(*t, t.file("strict.cfg"), {}, exportTime()).ok());

    const ExchangeResult players = exportspieler(*t, t.file("1_sp.cfg"), {}, exportTime(), true);
    ASSERT_TRUE(players.ok()) << players.result.message.toStdString();
    const QByteArray bytes = readBytes(t.file("1_sp.cfg"));
    EXPECT_TRUE(bytes.contains("\"Lukasz\"\r\n"));
    EXPECT_TRUE(bytes.contains("\"C.\"\r\n"));
    EXPECT_TRUE(bytes.contains(*toCp1252("\"Müller\"\r\n")));
    ASSERT_EQ(players.findings.size(), 2);
    EXPECT_TRUE(players.findings[0].toString().startsWith("Spieler 1, Feld NAME:"));
    EXPECT_TRUE(players.findings[1].toString().startsWith("Spieler 1, Feld VORNAME:"));

    const ExchangeResult teams = exportvereine(*t, t.file("1_tm.cfg"), {}, exportTime(), true);
    ASSERT_TRUE(teams.ok()) << teams.result.message.toStdString();
    EXPECT_TRUE(readBytes(t.file("1_tm.cfg")).contains(*toCp1252("\"Györ\"\r\n")));
    ASSERT_EQ(teams.findings.size(), 1);
    EXPECT_TRUE(teams.findings[0].toString().startsWith("Team 0, Feld NAME:"));
    EXPECT_EQ(dumpWorld(*t), before) << "nothing in the database changes";
}
