// Every writer of the program replaces plain files only: a device, a pipe or
// a folder standing at the target is refused with a message, and stays.
#include "exchange/cfgwriter.h"
#include "platform/profile.h"
#include "platform/safefile.h"
#include "resources/resfwriter.h"

#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFileInfo>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace zorbo;
using zorbo::test::readBytes;
using zorbo::test::TempFolder;

namespace {

bool isFifo(const QString &path)
{
    return std::filesystem::is_fifo(QFile::encodeName(path).toStdString());
}

} // namespace

TEST(SafeFile, WritersRefuseWhatIsNoPlainFile)
{
    TempFolder t;
    const QString pipe = t.file("pipe");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    // Held open for reading and writing, so that no open of the pipe can block.
    const int fd = ::open(QFile::encodeName(pipe).constData(), O_RDWR | O_NONBLOCK);
    ASSERT_GE(fd, 0);
    const QString folder = t.file("ordner");
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString link = t.file("verweis");
    ASSERT_EQ(symlink(QFile::encodeName(pipe).constData(), QFile::encodeName(link).constData()), 0);

    for (const QString &target : {pipe, folder, link}) {
        CfgWriter cfg(target);
        cfg.line(QStringLiteral("x"));
        const Result r = cfg.save();
        EXPECT_FALSE(r.ok) << target.toStdString();
        EXPECT_TRUE(r.message.contains(QStringLiteral("keine gewöhnliche Datei"))) << r.message.toStdString();
        EXPECT_FALSE(packresf(target, 14, {}).ok) << target.toStdString();
        EXPECT_FALSE(writeini(QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("v"), target)) << target.toStdString();
        EXPECT_FALSE(replacefile(target, "x").ok) << target.toStdString();
    }
    EXPECT_TRUE(isFifo(pipe));
    EXPECT_TRUE(QFileInfo(folder).isDir());
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    ::close(fd);

    // Devices are only looked at, never written to.
    EXPECT_TRUE(writetargetproblem(QStringLiteral("/dev/null")).contains(QStringLiteral("Gerät")));
    EXPECT_TRUE(writetargetproblem(pipe).contains(QStringLiteral("Pipe")));
    EXPECT_TRUE(writetargetproblem(folder).contains(QStringLiteral("Ordner")));
    EXPECT_TRUE(writetargetproblem(t.file("neu")).isEmpty());

    // A plain file is replaced, a missing one created.
    ASSERT_TRUE(replacefile(t.file("neu"), "eins").ok);
    ASSERT_TRUE(replacefile(t.file("neu"), "zwei", Flush::None).ok);
    EXPECT_EQ(readBytes(t.file("neu")), "zwei");
    EXPECT_EQ(QDir(t.path()).entryList({"neu*"}, QDir::Files | QDir::Hidden), QStringList({"neu"})) << "no file left aside";
}

TEST(SafeFile, AWriteCutShortByAFullDiskKeepsTheWholeFile)
{
    TempFolder t;
    const QString file = t.file("ganz");
    ASSERT_TRUE(replacefile(file, "ganz und gar").ok);
    // A limit on file sizes stands in for a full disk: the write stops part of
    // the way, and the process lives on to tell it.
    struct rlimit before {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = before;
    small.rlim_cur = 9000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const QByteArray big(12000, 'x');
    const Result disk = replacefile(file, big, Flush::Disk);
    const Result none = replacefile(file, big, Flush::None);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_FALSE(disk.ok);
    EXPECT_FALSE(none.ok);
    EXPECT_TRUE(disk.message.contains(file)) << disk.message.toStdString();
    EXPECT_EQ(readBytes(file), "ganz und gar");
    EXPECT_EQ(QDir(t.path()).entryList(QDir::Files | QDir::Hidden), QStringList({"ganz"})) << "no file left aside";
}
