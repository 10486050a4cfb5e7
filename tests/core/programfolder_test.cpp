#include "core/programfolder.h"
#include "support/testsupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace zorbo;

namespace {

// The user's data folder pointed into a temporary folder, under the name
// both programs give themselves.
struct DataFolderRule : ::testing::Test {
    zorbo::test::TempFolder home;
    QByteArray oldData = qgetenv("XDG_DATA_HOME");
    QString oldName = QCoreApplication::applicationName();
    QString data;
    void SetUp() override
    {
        qputenv("XDG_DATA_HOME", home.file("daten").toLocal8Bit());
        QCoreApplication::setApplicationName(QStringLiteral("zorbo-editor"));
        data = home.file("daten/zorbo-editor");
    }
    void TearDown() override
    {
        if (oldData.isNull())
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", oldData);
        QCoreApplication::setApplicationName(oldName);
    }
};

} // namespace

TEST_F(DataFolderRule, AWritableFolderKeepsTheWorldBesideTheProgram)
{
    zorbo::test::TempFolder portable;
    EXPECT_EQ(programfolderfor(portable.path()), QDir::cleanPath(portable.path()));
    EXPECT_TRUE(installedshare(portable.path()).isEmpty());
    // A build folder named bin without delivered pictures beside it is no install.
    ASSERT_TRUE(QDir(portable.path()).mkpath("bin"));
    EXPECT_EQ(programfolderfor(portable.file("bin")), portable.file("bin"));
    EXPECT_FALSE(QFileInfo::exists(data));
}

TEST_F(DataFolderRule, AnInstalledProgramKeepsItInTheDataFolderEvenWhenBinIsWritable)
{
    zorbo::test::TempFolder prefix;
    ASSERT_TRUE(QDir(prefix.path()).mkpath("bin"));
    ASSERT_TRUE(QDir(prefix.path()).mkpath("share/zorbo-editor/wappen"));
    EXPECT_EQ(installedshare(prefix.file("bin")), prefix.file("share/zorbo-editor"));
    EXPECT_EQ(programfolderfor(prefix.file("bin")), data);
    EXPECT_TRUE(QFileInfo(data).isDir());
}

TEST_F(DataFolderRule, AFolderTheUserCannotWriteSendsTheWorldToTheDataFolder)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root writes to every folder";
    zorbo::test::TempFolder locked;
    ASSERT_TRUE(QFile::setPermissions(locked.path(), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_EQ(programfolderfor(locked.path()), data);
    QFile::setPermissions(locked.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
