#include "platform/registry.h"

#include "support/testsupport.h"

#include "support/qstringprint.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

using namespace zorbo;
using zorbo::test::TempFolder;
using zorbo::test::writeBytes;

namespace {

const char systemReg[] =
    "WINE REGISTRY Version 2\n"
    ";; All keys relative to \\\\Machine\n"
    "\n"
    "#arch=win64\n"
    "\n"
    "[Software\\\\Quenda\\\\Zorbo Manager\\\\a_value] 1700000000\n"
    "#time=1da0b7c8e4a2f00\n"
    "\"Work_Dir\"=\"C:\\\\Spiele\\\\Zorbo\"\n"
    "\"Count\"=dword:0000000a\n"
    "\"Minus\"=dword:ffffffff\n"
    "\"Binary\"=hex:01,02,\\\n"
    "  03,04\n"
    "@=\"standard\"\n"
    "\n"
    "[Software\\\\Wow6432Node\\\\Quenda\\\\Zorbo Manager\\\\a_value] 1700000000\n"
    "\"Work_Dir\"=\"C:\\\\Wow\\\\Zorbo\"\n"
    "\n"
    "[Software\\\\Wow6432Node\\\\Nur32] 1700000000\n"
    "\"Pfad\"=\"C:\\\\Nur32\"\n";

const char userReg[] =
    "WINE REGISTRY Version 2\r\n"
    ";; All keys relative to \\\\User\\\\S-1-5-21-0-0-0-1000\r\n"
    "\r\n"
    "[Software\\\\Quenda\\\\Zorbo Manager\\\\a_value] 1700000000\r\n"
    "\"Work_Dir\"=\"C:\\\\Benutzer\\\\Stra\\x00dfe\\\\\\\"q\\\"\"\r\n"
    "\"Greedy\"=\"\\x20ac5|\\x00e4de|\\xe4n\"\r\n"
    "\"Control\"=\"a\\tb\\0\"\r\n"
    "\"Zeilen\"=\"C:\\\\Spiele\\n[ordner]\\r\\nwappen=C:\\\\\"\r\n"
    "\r\n"
    "[Software\\\\M\\xe4nner] 1700000000\r\n"
    "\"Wert\"=\"ja\"\r\n";

class Registry : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_hadPrefix = qEnvironmentVariableIsSet("WINEPREFIX");
        m_oldPrefix = qgetenv("WINEPREFIX");
        qputenv("WINEPREFIX", dir.path().toLocal8Bit());
        ASSERT_TRUE(writeBytes(dir.file("system.reg"), systemReg));
        ASSERT_TRUE(writeBytes(dir.file("user.reg"), userReg));
    }
    void TearDown() override
    {
        if (m_hadPrefix)
            qputenv("WINEPREFIX", m_oldPrefix);
        else
            qunsetenv("WINEPREFIX");
    }
    // The value read, or "error <n>" with the value left as "untouched".
    QString get(RegRoot root, const char *key, const char *name)
    {
        QString value = QStringLiteral("untouched");
        const int rc = getregvalue(root, QString::fromLatin1(key), QString::fromLatin1(name), value);
        return rc == 0 ? value : QStringLiteral("error %1 %2").arg(rc).arg(value);
    }
    TempFolder dir;
    bool m_hadPrefix = false;
    QByteArray m_oldPrefix;
};

const char gameKey[] = "Software\\Quenda\\Zorbo Manager\\a_value";

} // namespace

// A 32-bit program sees the machine's Wow6432Node copy; the user's hive has
// no such mirror. Keys and names count without regard to case. A value found
// but neither text nor number is a success that leaves the value alone; a
// missing key or value is error 2; text with a line break, which could carry
// a line into a file it is written to, is refused as invalid data.
TEST_F(Registry, BothHivesTheWow6432NodeAndTheValueKinds)
{
    EXPECT_EQ(wineprefix(), dir.path());
    const RegRoot machine = RegRoot::LocalMachine, user = RegRoot::CurrentUser;
    const std::tuple<RegRoot, const char *, const char *, QString> cases[] = {
        {machine, gameKey, "Work_Dir", "C:\\Wow\\Zorbo"},
        {machine, "software\\nur32", "pfad", "C:\\Nur32"},
        {machine, gameKey, "Count", "10"},
        {user, "SOFTWARE\\quenda\\ZORBO MANAGER\\A_VALUE", "work_dir", QStringLiteral(u"C:\\Benutzer\\Straße\\\"q\"")},
        {user, "Software\\Nur32", "Pfad", "error 2 untouched"},
        {machine, gameKey, "Minus", "-1"},
        {machine, gameKey, "", "standard"},
        {machine, gameKey, "Binary", "untouched"},
        {user, gameKey, "Greedy", QStringLiteral(u"€5|äde|än")},
        {user, gameKey, "Control", QStringLiteral(u"a\tb") + QChar(0)},
        {user, "Software\\M\xc4NNER", "Wert", "ja"},
        {user, gameKey, "Zeilen", "error 13 untouched"},
        {machine, gameKey, "Fehlt", "error 2 untouched"},
        {machine, "Software\\Quenda", "Work_Dir", "error 2 untouched"}};
    for (const auto &[root, key, name, expected] : cases)
        EXPECT_EQ(get(root, key, name), expected) << key << " " << name;
    ASSERT_TRUE(QFile::remove(dir.file("user.reg")));
    EXPECT_EQ(get(user, gameKey, "Work_Dir"), QLatin1String("error 2 untouched"));
}

TEST(Winepath, MatchesPartsWithoutRegardToCase)
{
    TempFolder dir;
    const QString prefix = dir.path();
    ASSERT_TRUE(QDir().mkpath(prefix + "/drive_c/Games/Zorbo Manager/Config"));
    ASSERT_TRUE(QDir().mkpath(prefix + "/drive_c/Games/data"));
    ASSERT_TRUE(QDir().mkpath(prefix + "/drive_c/Games/Data"));
    const QString c = prefix + "/drive_c";
    EXPECT_EQ(winepath("c:\\GAMES\\zorbo manager\\CONFIG\\1_tm.cfg", prefix),
              c + "/Games/Zorbo Manager/Config/1_tm.cfg");
    EXPECT_EQ(winepath("C:\\Games\\Data\\", prefix), c + "/Games/Data/");
    EXPECT_EQ(winepath("C:\\games\\Fehlt\\Sub", prefix), c + "/Games/Fehlt/Sub");

    // dosdevices decides where a drive lies.
    ASSERT_TRUE(QDir().mkpath(prefix + "/dosdevices"));
    ASSERT_TRUE(QDir().mkpath(prefix + "/elsewhere/Spiel"));
    ASSERT_TRUE(QFile::link("../drive_c", prefix + "/dosdevices/c:"));
    ASSERT_TRUE(QFile::link("../elsewhere", prefix + "/dosdevices/d:"));
    EXPECT_EQ(winepath("C:\\games", prefix), c + "/Games");
    EXPECT_EQ(winepath("D:\\SPIEL", prefix), QDir(prefix + "/elsewhere").canonicalPath() + "/Spiel");
}
