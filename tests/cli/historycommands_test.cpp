#include "core/generator.h"
#include "support/cli.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

// The lines of the command's output.
QStringList lines(const CliRun &run)
{
    return run.out.split('\n', Qt::SkipEmptyParts);
}

} // namespace

TEST(CliHistory, StepsAreUndoneRedoneAndARestorePointBringsTheWorldBack)
{
    NewWorld w;
    w->run("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (5, 'SV Probe', 'Deutschland')");
    spieler20new(w.db(), 5, "Deutschland", 3);
    w.opened.db.reset(); // the commands have the file to themselves
    const QString file = w.file("zorbo.mdb");
    const auto cli = [&](const QStringList &args) { return runCli(QStringList{"--dir", w.dir.path()} + args); };
    const auto name = [&] { return opendb(file).db->scalar("SELECT NAME FROM vereine WHERE NUMMER = 5").toString(); };

    ASSERT_EQ(cli({"rename-club", "5", "Erster"}).exitCode, 0);
    ASSERT_EQ(cli({"rename-club", "5", "Zweiter"}).exitCode, 0);
    CliRun history = cli({"history"});
    ASSERT_EQ(history.exitCode, 0) << history.err.toStdString();
    const QRegularExpression line(R"(^(\d+)  \d\d\.\d\d\.\d{4} \d\d:\d\d  \S.*$)");
    QStringList shown = lines(history);
    ASSERT_EQ(shown.size(), 2) << history.out.toStdString();
    const auto id = [&](const QString &l) { return line.match(l).captured(1).toLongLong(); };
    EXPECT_TRUE(line.match(shown[0]).hasMatch()) << shown[0].toStdString();
    EXPECT_GT(id(shown[0]), id(shown[1])) << "newest first";
    EXPECT_FALSE(history.out.contains("rückgängig gemacht"));

    CliRun undo = cli({"undo"});
    ASSERT_EQ(undo.exitCode, 0) << undo.err.toStdString();
    EXPECT_EQ(name(), "Erster");
    shown = lines(cli({"history"}));
    ASSERT_EQ(shown.size(), 2);
    EXPECT_TRUE(shown[0].endsWith("(rückgängig gemacht)")) << shown[0].toStdString();
    EXPECT_FALSE(shown[1].endsWith("(rückgängig gemacht)"));
    EXPECT_EQ(cli({"redo"}).exitCode, 0);
    EXPECT_EQ(name(), "Zweiter");
    EXPECT_EQ(cli({"undo", "2"}).exitCode, 0);
    EXPECT_EQ(name(), "SV Probe");
    EXPECT_EQ(cli({"redo", "2"}).exitCode, 0);
    EXPECT_EQ(name(), "Zweiter");

    const CliRun bad = cli({"undo", "zwei"});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_TRUE(bad.err.contains("»zwei«")) << bad.err.toStdString();
    EXPECT_EQ(name(), "Zweiter");

    // Emptying the world keeps a restore point first.
    ASSERT_EQ(cli({"wipe", "--yes"}).exitCode, 0);
    EXPECT_TRUE(name().isEmpty());
    const CliRun points = cli({"restore-points"});
    ASSERT_EQ(points.exitCode, 0) << points.err.toStdString();
    shown = lines(points);
    ASSERT_EQ(shown.size(), 1) << points.out.toStdString();
    EXPECT_TRUE(shown[0].contains(" Vereine ")) << shown[0].toStdString();
    const QString point = shown[0].section("  ", 0, 0);
    const CliRun restored = cli({"restore", point});
    ASSERT_EQ(restored.exitCode, 0) << restored.err.toStdString();
    EXPECT_EQ(name(), "Zweiter");
    EXPECT_EQ(lines(cli({"restore-points"})).size(), 2) << "the wiped world was kept before";
    const CliRun missing = cli({"restore", "gibt-es-nicht"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_FALSE(missing.err.isEmpty());
    EXPECT_EQ(name(), "Zweiter");

    ASSERT_EQ(cli({"compact", "--drop-history"}).exitCode, 0);
    EXPECT_EQ(cli({"history"}).out, "Der Verlauf ist leer.\n");
    EXPECT_EQ(cli({"undo"}).exitCode, 1) << "nothing is left to undo";
    EXPECT_EQ(name(), "Zweiter");

    // A step whose changes were altered is refused with the way to drop it.
    ASSERT_EQ(cli({"rename-club", "5", "Dritter"}).exitCode, 0);
    const qint64 step = opendb(file).db->scalar("SELECT max(schritt) FROM verlauf").toLongLong();
    opendb(file).db->run("UPDATE verlauf SET aenderungen = substr(aenderungen, 1, length(aenderungen) - 1)");
    const CliRun refused = cli({"undo"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains(QString("»zorbo-cli drop-history %1«").arg(step))) << refused.err.toStdString();
    EXPECT_EQ(name(), "Dritter");
    ASSERT_EQ(cli({"drop-history", QString::number(step)}).exitCode, 0);
    EXPECT_EQ(cli({"history"}).out, "Der Verlauf ist leer.\n");

    // The staging folder of a crest import that was killed goes at the next start.
    ASSERT_TRUE(QDir().mkpath(w.dir.path() + "/wappen/.wappen-neu"));
    writeBytes(w.dir.path() + "/wappen/.wappen-neu/wappen0001.bmp", "halb");
    ASSERT_EQ(cli({"history"}).exitCode, 0);
    EXPECT_FALSE(QFileInfo::exists(w.dir.path() + "/wappen/.wappen-neu"));

    // A point made by hand is listed as such and deleted by its name.
    ASSERT_EQ(cli({"restore-point", "Vor dem Umbau"}).exitCode, 0);
    shown = lines(cli({"restore-points"}));
    ASSERT_TRUE(shown.value(0).contains("  Vor dem Umbau (von Hand)  ")) << shown.value(0).toStdString();
    ASSERT_EQ(cli({"delete-restore-point", shown[0].section("  ", 0, 0)}).exitCode, 0);
    EXPECT_EQ(lines(cli({"restore-points"})).size(), shown.size() - 1);
}
