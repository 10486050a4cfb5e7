#include "core/settings.h"
#include "platform/database.h"
#include "support/cli.h"
#include "support/problemworld.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

TEST(CliCheck, ExitsOneOnProblemsOnlyNotOnWarnings)
{
    TempFolder dir;
    ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    const CliRun fresh = runCli({"--dir", dir.path(), "check"});
    EXPECT_EQ(fresh.exitCode, 0) << fresh.out.toStdString() << fresh.err.toStdString();
    EXPECT_EQ(fresh.out, "Keine Probleme gefunden.\n");

    {
        Database db(dir.file("zorbo.mdb"));
        db.exec("DELETE FROM vereinspieler; DELETE FROM spieler; DELETE FROM vereine");
        makecleanworld(db, loadsettings(dir.path()));
        db.run("DELETE FROM vereinspieler WHERE spieler = 119");
        db.run("INSERT INTO vereinspieler VALUES (0, 119)");
    }
    const CliRun warned = runCli({"--dir", dir.path(), "check"});
    EXPECT_EQ(warned.exitCode, 0) << warned.out.toStdString() << warned.err.toStdString();
    EXPECT_EQ(warned.out, "Warnung: Kader nicht mit 20 Spielern:\n"
                          "  Team 10: Verein „FC Test“ hat 19 Spieler statt 20\n"
                          "0 Probleme, 1 Warnung.\n");

    Database(dir.file("zorbo.mdb")).run("UPDATE spieler SET ERLERNT = '4,77' WHERE NUMMER = 101");
    const CliRun failed = runCli({"--dir", dir.path(), "check"});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(failed.out.startsWith("Talente außerhalb von 0 bis 52:\n  Spieler 101, Feld ERLERNT: ")) << failed.out.toStdString();
    EXPECT_TRUE(failed.out.endsWith("1 Problem, 1 Warnung.\n"));
}

TEST(CliCheck, AWorldTheProgramMakesChecksCleanAndADefaultCrestIsAWarning)
{
    TempFolder dir;
    ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    ASSERT_EQ(runCli({"--dir", dir.path(), "template"}).exitCode, 0);
    const CliRun made = runCli({"--dir", dir.path(), "check"});
    EXPECT_EQ(made.exitCode, 0) << made.err.toStdString();
    EXPECT_EQ(made.out, "Keine Probleme gefunden.\n") << made.out.left(2000).toStdString();

    // A crest without its file shows as the default crest: a warning (the
    // problem check's own test has the error without default.tga).
    Database(dir.file("zorbo.mdb")).run("UPDATE vereine SET GRAFIK_NR = 500 WHERE NUMMER = (SELECT min(NUMMER) FROM vereine WHERE NUMMER > 0)");
    const CliRun warned = runCli({"--dir", dir.path(), "check"});
    EXPECT_EQ(warned.exitCode, 0) << warned.err.toStdString();
    EXPECT_TRUE(warned.out.startsWith("Warnung: Wappen ohne Datei") && warned.out.contains("vereins_wappen_500.tga") &&
                warned.out.endsWith("\n0 Probleme, 1 Warnung.\n"))
        << warned.out.toStdString();
}

TEST(CliFind, PrintsTheHitsGroupedAndExitsOneOnNone)
{
    TempFolder dir;
    ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    const CliRun found = runCli({"--dir", dir.path(), "find", "#17"});
    EXPECT_EQ(found.exitCode, 0) << found.err.toStdString();
    EXPECT_EQ(found.out, "Spieler:\n  S. 17 (#17) – TRANSFERMARKT, Sturm\n");
    const CliRun none = runCli({"--dir", dir.path(), "find", "Zorbo", "Müller"});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.out, "Nichts gefunden.\n");
}
