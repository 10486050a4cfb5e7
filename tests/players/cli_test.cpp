// zorbo-cli players: the same list, edits and files as the window, from scripts.
#include "support/cli.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

TEST(PlayersCli, ListsEditsAndExchangesTheFileWithTheSameRules)
{
    TempFolder dir;
    const QString d = dir.path();
    ASSERT_EQ(runCli({"--dir", d, "init"}).exitCode, 0);
    ASSERT_EQ(runCli({"--dir", d, "import-teams", QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg")}).exitCode, 0);
    ASSERT_EQ(runCli({"--dir", d, "import-players", QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg")}).exitCode, 0);

    const CliRun listed = runCli({"--dir", d, "players", "--filter", "text=weiss; position=Tor", "--json"});
    ASSERT_EQ(listed.exitCode, 0) << listed.err.toStdString();
    const QJsonArray rows = QJsonDocument::fromJson(listed.out.toUtf8()).array();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].toObject()["name"].toString(), "Weiß");
    EXPECT_EQ(rows[0].toObject()["position"].toInt(), 0);

    const CliRun bad = runCli({"--dir", d, "players", "--filter", "farbe=rot"});
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_TRUE(bad.err.contains("farbe")) << bad.err.toStdString();

    const CliRun help = runCli({"players", "--help"});
    EXPECT_TRUE(help.out.contains("sterne<3") && help.out.contains("import-csv")) << help.out.toStdString();

    // A maximum below the strength is refused with the field named, and nothing is kept.
    const CliRun refused = runCli({"--dir", d, "players", "set", "--filter", "position=Tor", "Maxstärke-12"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains("Maxstärke:")) << refused.err.toStdString();
    EXPECT_TRUE(runCli({"--dir", d, "history"}).out.count('\n') == 2) << "only the two imports";

    const CliRun set = runCli({"--dir", d, "players", "set", "--filter", "position=Tor", "Resteinsätze=0"});
    ASSERT_EQ(set.exitCode, 0) << set.err.toStdString();
    EXPECT_TRUE(set.out.contains("Resteinsätze")) << set.out.toStdString();
    EXPECT_TRUE(runCli({"--dir", d, "players", "--filter", "position=Tor", "--json"}).out.contains("\"resteinsaetze\": 0"));

    const QString file = dir.file("spieler.csv");
    ASSERT_EQ(runCli({"--dir", d, "players", "export-csv", file}).exitCode, 0);
    const CliRun same = runCli({"--dir", d, "players", "import-csv", file});
    EXPECT_EQ(same.exitCode, 0) << same.err.toStdString();
    EXPECT_TRUE(same.out.contains("keine Änderung")) << same.out.toStdString();
    EXPECT_EQ(runCli({"--dir", d, "history"}).out.count('\n'), 3) << "an unedited file makes no step";
}
