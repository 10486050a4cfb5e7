#include "support/cli.h"
#include "worldfixture.h"

using namespace zorbo::test;

namespace {

const QString sample = QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/");

} // namespace

TEST(CliExchange, ImportExportTeamFileAndLeague)
{
    TempFolder dir;
    const QStringList base{"--dir", dir.path()};
    CliRun r = runCli(base + QStringList{"import-teams", sample + "1_tm.cfg"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("6 Vereine, 3 Nationalteams und 58 Kaderplätze")) << r.out.toStdString();
    r = runCli(base + QStringList{"import-players", sample + "1_sp.cfg"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();

    ASSERT_EQ(runCli(base + QStringList{"export-players", dir.file("sp.cfg")}).exitCode, 0);
    EXPECT_EQ(withoutDate(readBytes(dir.file("sp.cfg"))), withoutDate(readBytes(sample + "1_sp.cfg")));

    r = runCli(base + QStringList{"open-team", sample + "Fortuna Großgmain.tea", "--new-in", "Schweiz"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("Verein 15 mit 20 Spielern in Schweiz")) << r.out.toStdString();
    ASSERT_EQ(runCli(base + QStringList{"save-team", "15", dir.file("neu.tea")}).exitCode, 0);
    r = runCli(base + QStringList{"open-team", dir.file("neu.tea"), "--replace", "12"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();

    r = runCli(base + QStringList{"league"});
    EXPECT_EQ(r.exitCode, 1) << "the sample has no leagues' clubs";
    EXPECT_TRUE(r.err.contains("1_we.cfg wurde nicht geschrieben")) << r.err.toStdString();
    ASSERT_EQ(runCli(base + QStringList{"template"}).exitCode, 0);
    r = runCli(base + QStringList{"league"});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
}

TEST(CliExchange, FailuresAreGermanOnStandardErrorWithExitOne)
{
    TempFolder dir;
    const QStringList base{"--dir", dir.path()};
    writeBytes(dir.file("kaputt.cfg"), "NEUES_TEAM\r\nNUMMER x\r\n");
    CliRun r = runCli(base + QStringList{"import-teams", dir.file("kaputt.cfg")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("kaputt.cfg, Zeile 2") && r.err.contains("NUMMER")) << r.err.toStdString();
    r = runCli(base + QStringList{"import-players", dir.file("fehlt.cfg")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("gibt es nicht")) << r.err.toStdString();
    EXPECT_EQ(runCli(base + QStringList{"open-team", dir.file("x.tea")}).exitCode, 2);
    EXPECT_EQ(runCli(base + QStringList{"save-team", "zwölf", dir.file("x.tea")}).exitCode, 2);
    r = runCli(base + QStringList{"save-team", "4711", dir.file("x.tea")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("4711")) << r.err.toStdString();
}
