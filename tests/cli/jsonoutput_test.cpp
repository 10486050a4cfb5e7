#include "platform/database.h"
#include "support/cli.h"
#include "support/testsupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

struct CliJson : ::testing::Test {
    TempFolder dir;
    void SetUp() override { ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0); }
    CliRun cli(const QStringList &args) { return runCli(QStringList{"--dir", dir.path()} + args); }
    // The command's JSON output, which must parse whole.
    QJsonDocument json(const QStringList &args, int exitCode = 0)
    {
        const CliRun r = cli(args + QStringList{"--json"});
        EXPECT_EQ(r.exitCode, exitCode) << args.join(' ').toStdString() << ": " << r.err.toStdString();
        QJsonParseError error;
        const QJsonDocument doc = QJsonDocument::fromJson(r.out.toUtf8(), &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << r.out.toStdString();
        return doc;
    }
};

} // namespace

TEST_F(CliJson, EveryListingCommandSpeaksJson)
{
    qint64 players = -1;
    for (const QJsonValue row : json({"info"}).array())
        if (row["tabelle"].toString() == "spieler")
            players = row["zeilen"].toInteger();
    EXPECT_EQ(players, 1700);

    const QJsonObject clean = json({"check"}).object();
    EXPECT_EQ(clean["fehler"].toInt(-1), 0);
    EXPECT_TRUE(clean["probleme"].toArray().isEmpty());
    Database(dir.file("zorbo.mdb")).run("UPDATE spieler SET ERLERNT = '4,77' WHERE NUMMER = 17");
    const QJsonObject broken = json({"check"}, 1).object();
    EXPECT_EQ(broken["fehler"].toInt(), 1);
    const QJsonObject problem = broken["probleme"].toArray().first().toObject();
    EXPECT_EQ(problem["spieler"].toInteger(), 17);
    EXPECT_EQ(problem["feld"].toString(), "ERLERNT");
    EXPECT_FALSE(problem["warnung"].toBool(true));

    const QJsonObject found = json({"find", "#17"}).object();
    ASSERT_EQ(found["spieler"].toArray().size(), 1);
    EXPECT_EQ(found["spieler"][0]["nummer"].toInteger(), 17);
    EXPECT_EQ(found["spieler"][0]["detail"].toString(), "TRANSFERMARKT, Sturm");
    EXPECT_TRUE(found["vereine"].toArray().isEmpty());
    EXPECT_TRUE(json({"find", "Zorbo", "Müller"}, 1).object()["laender"].toArray().isEmpty());

    ASSERT_EQ(cli({"set-number", "17", "9"}).exitCode, 0);
    ASSERT_EQ(cli({"undo"}).exitCode, 0);
    const QJsonArray steps = json({"history"}).array();
    ASSERT_EQ(steps.size(), 1);
    EXPECT_TRUE(steps[0]["rueckgaengig"].toBool());
    EXPECT_GT(steps[0]["schritt"].toInteger(), 0);
    EXPECT_FALSE(steps[0]["zeit"].toString().isEmpty());

    EXPECT_TRUE(json({"restore-points"}).array().isEmpty());
    ASSERT_EQ(cli({"restore-point", "Vor dem Umbau"}).exitCode, 0);
    const QJsonArray points = json({"restore-points"}).array();
    ASSERT_EQ(points.size(), 1);
    EXPECT_EQ(points[0]["grund"].toString(), "Vor dem Umbau");
    EXPECT_TRUE(points[0]["vonhand"].toBool());
    EXPECT_EQ(points[0]["spieler"].toInteger(), 1700);
}

TEST_F(CliJson, WrongUseExitsTwoAndARefusedRunOne)
{
    const CliRun unknown = cli({"zaubern"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_TRUE(unknown.err.contains("Unbekannter Befehl"));
    EXPECT_EQ(runCli({}).exitCode, 2);
    EXPECT_EQ(runCli({"--dir"}).exitCode, 2);
    EXPECT_EQ(cli({"info", "mehr"}).exitCode, 2);
    EXPECT_EQ(cli({"undo", "zwei"}).exitCode, 2);
    EXPECT_EQ(cli({"import-teams"}).exitCode, 2);
    EXPECT_EQ(cli({"restore", "fehlt"}).exitCode, 1);
    const CliRun help = runCli({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.contains("Rückgabewerte: 0 erledigt, 1 Probleme gefunden oder Lauf verweigert,\n2 falscher Aufruf."))
        << help.out.toStdString();
}
