// An import replaces the crests all at once or not at all: a switch cut off
// halfway is finished by the next run, unfinished staging is dropped, and a
// full disk fails the run without touching a crest.
#include "resources/crestfixtures.h"
#include "resources/crestrun.h"
#include "resources/crestswitch.h"
#include "support/cli.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

// A folder of crests a_0 .. a_<n-1>, each holding text.
void fillCrests(const QString &folder, int n, const QByteArray &text)
{
    QDir().mkpath(folder);
    for (int i = 0; i < n; ++i)
        writeBytes(folder + QStringLiteral("a_%1.tga").arg(i), text);
}

QSet<QByteArray> contentsOf(const QString &wappen, int n)
{
    QSet<QByteArray> seen;
    for (int i = 0; i < n; ++i)
        seen.insert(readBytes(wappen + QStringLiteral("a_%1.tga").arg(i)));
    return seen;
}

} // namespace

TEST(CrestSwitch, NextRunFinishesACommittedSwitchAndDropsAnUnfinishedOne)
{
    TempFolder t;
    const QString wappen = t.path() + "/wappen/";
    fillCrests(wappen, 10, "alt");

    // Cut off while staging: nothing of it reaches the crests.
    fillCrests(crestStaging(wappen), 6, "neu");
    writeBytes(crestStaging(wappen) + "a_6.tga.Xy12Ab", "halb");
    {
        // Not while another run holds the folder.
        FolderLock busy(t.path() + "/.wappen-sperre");
        ASSERT_TRUE(busy.tryLock());
        ASSERT_TRUE(recovercrests(wappen).ok);
        EXPECT_TRUE(QFileInfo::exists(crestStaging(wappen)));
        EXPECT_FALSE(CrestSwitch(wappen).begin().ok);
    }
    ASSERT_TRUE(recovercrests(wappen).ok);
    EXPECT_EQ(contentsOf(wappen, 10), QSet<QByteArray>({"alt"}));
    EXPECT_FALSE(QFileInfo::exists(crestStaging(wappen)));

    // A run killed while it took the lock leaves an empty lock file; the
    // next run takes it over at once, and the folder holds only crests.
    writeBytes(t.path() + "/.wappen-sperre", "");
    fillCrests(crestStaging(wappen), 2, "neu");
    ASSERT_TRUE(recovercrests(wappen).ok);
    EXPECT_FALSE(QFileInfo::exists(crestStaging(wappen)));
    EXPECT_FALSE(QFileInfo::exists(t.path() + "/.wappen-sperre"));
    EXPECT_EQ(filesBelow(wappen).size(), 10);

    // Cut off after the commit, with four crests moved in already.
    fillCrests(crestCommitted(wappen), 10, "neu");
    for (int i = 0; i < 4; ++i)
        QFile::rename(crestCommitted(wappen) + QStringLiteral("a_%1.tga").arg(i), wappen + QStringLiteral("a_%1.tga").arg(i));
    ASSERT_TRUE(recovercrests(wappen).ok);
    EXPECT_EQ(contentsOf(wappen, 10), QSet<QByteArray>({"neu"}));
    EXPECT_EQ(filesBelow(wappen).size(), 10);

    // The import recovers before it starts, so the display never sees a mix.
    fillCrests(crestCommitted(wappen), 10, "neuer");
    QFile::remove(crestCommitted(wappen) + "a_9.tga");
    writeBytes(t.file("leer.res"), archiveBytes({}));
    ASSERT_TRUE(importwappen(t.file("leer.res"), wappen).result.ok);
    EXPECT_EQ(contentsOf(wappen, 9), QSet<QByteArray>({"neuer"}));
    EXPECT_EQ(filesBelow(wappen).size(), 10);
}

#ifdef ZORBO_CLI
TEST(CrestSwitch, FullDiskFailsTheRunAndLeavesEveryCrest)
{
    // A file size limit stands in for a full disk: writes past it fail as
    // they would with no space left, with no mount and no root needed.
    constexpr int limit = 100000;
    TempFolder t;
    QList<RawEntry> entries;
    for (int i = 0; i < 600; ++i) {
        const bool big = i == 300; // its picture is larger than the limit
        const int side = big ? 200 : 4;
        entries.append({QStringLiteral("a_%1").arg(i).toLatin1(), gfpBytes(side, side, pattern16(side, side), true)});
    }
    writeBytes(t.file("neu.res"), archiveBytes(entries));
    // A first run sets up the program folder without any limit.
    ASSERT_EQ(runCli({"--dir", t.path(), "import-crests", t.file("neu.res")}).exitCode, 0);
    const QString wappen = t.file("wappen/");
    fillCrests(wappen, 600, "alt");
    writeBytes(t.file("alt.res"), "altes Archiv");
    const QStringList before = filesBelow(t.path());

    auto limited = [&](const QStringList &args) {
        QProcess p;
        p.setChildProcessModifier([] {
            const rlimit r{limit, limit};
            setrlimit(RLIMIT_FSIZE, &r);
            std::signal(SIGXFSZ, SIG_IGN);
        });
        p.start(QStringLiteral(ZORBO_CLI), QStringList{"--dir", t.path()} + args);
        p.waitForFinished(120000);
        return CliRun{p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
                      QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
    };
    CliRun run = limited({"import-crests", t.file("neu.res")});
    EXPECT_EQ(run.exitCode, 1) << run.out.toStdString();
    EXPECT_TRUE(run.err.contains("a_300")) << run.err.toStdString();
    EXPECT_EQ(contentsOf(wappen, 600), QSet<QByteArray>({"alt"}));
    EXPECT_EQ(filesBelow(t.path()), before);

    // The export's archive outgrows the limit too; the old archive stays.
    QByteArray list = "[wa]\r\ndatei=wa.res\r\nanzahl=600\r\ntype=14\r\n";
    for (int i = 0; i < 600; ++i)
        list += "[a_" + QByteArray::number(i) + "]\r\n";
    writeBytes(wappen + "wa.lst", list);
    run = limited({"export-crests", t.file("alt.res")});
    EXPECT_EQ(run.exitCode, 1) << run.out.toStdString();
    EXPECT_EQ(readBytes(t.file("alt.res")), "altes Archiv");
}
#endif
