#include "support/cli.h"
#include "support/testsupport.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace zorbo::test;

TEST(CliWorld, InitTwiceThenInfo)
{
    TempFolder dir;
    const CliRun first = runCli({"--dir", dir.path(), "init"});
    ASSERT_EQ(first.exitCode, 0) << first.err.toStdString();
    const QByteArray ini = readBytes(dir.file("zorboeditor.ini"));
    EXPECT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    EXPECT_EQ(readBytes(dir.file("zorboeditor.ini")), ini);

    const CliRun info = runCli({"--dir", dir.path(), "info"});
    ASSERT_EQ(info.exitCode, 0);
    EXPECT_TRUE(info.out.contains(QRegularExpression("spieler +1700\n"))) << info.out.toStdString();
    EXPECT_TRUE(info.out.contains(QRegularExpression("e_attribute +53\n")));
}

TEST(CliWorld, FailuresSayWhyInGermanAndExitOne)
{
    TempFolder dir;
    const CliRun info = runCli({"--dir", dir.path(), "info"});
    EXPECT_EQ(info.exitCode, 1);
    EXPECT_TRUE(info.err.contains("keine zorbo.mdb")) << info.err.toStdString();

    writeBytes(dir.file("zorbo.mdb"), "kein SQLite");
    const CliRun foreign = runCli({"--dir", dir.path(), "init"});
    EXPECT_EQ(foreign.exitCode, 1);
    EXPECT_TRUE(foreign.err.contains("keine Datenbank des Zorbo Editors"));
    EXPECT_EQ(readBytes(dir.file("zorbo.mdb")), "kein SQLite");

    const CliRun help = runCli({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.contains("init"));
}

TEST(CliWorld, DamagedDatabaseGivesGermanAdviceInsteadOfACrash)
{
    TempFolder dir;
    ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    QFile f(dir.file("zorbo.mdb"));
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    const qint64 size = f.size();
    ASSERT_GT(size, 40 * 4096);
    // Pages in the middle: the players' table, past the schema on page 1.
    ASSERT_TRUE(f.seek(size / 2));
    f.write(QByteArray(16 * 4096, '\xA5'));
    f.close();

    const CliRun info = runCli({"--dir", dir.path(), "info"});
    EXPECT_EQ(info.exitCode, 1) << info.err.toStdString();
    EXPECT_TRUE(info.err.contains("beschädigt")) << info.err.toStdString();
    EXPECT_TRUE(info.err.contains("»sicherungen«"));
    EXPECT_FALSE(info.err.contains("malformed"));
}
