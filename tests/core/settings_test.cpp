#include "core/settings.h"
#include "platform/profile.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::TempFolder;

namespace {

// A registry holding Work_Dir under the roots given.
RegistryReader fakeRegistry(const QString &machine, const QString &user)
{
    return [=](RegRoot root, const QString &key, const QString &name, QString &value) {
        const QString &v = root == RegRoot::LocalMachine ? machine : user;
        if (v.isNull() || key != QLatin1String(gameRegistryKey) || name != QLatin1String(gameRegistryValue))
            return 2;
        value = v;
        return 0;
    };
}

} // namespace

TEST(Settings, FirstRunWithoutGameUsesProgramFolderEverywhere)
{
    TempFolder dir;
    const Settings s = loadsettings(dir.path(), nullptr, fakeRegistry({}, {}));
    ASSERT_TRUE(QFile::exists(s.file()));
    EXPECT_EQ(s.folder(AttributeFolder), dir.path() + "/attribute/");
    for (Folder f : {ZorbodatenFolder, A4datenFolder, ZorboconfigFolder, ZorboresFolder, ZorbospielerFolder})
        EXPECT_EQ(s.folder(f), dir.path() + "/") << f;
    EXPECT_EQ(readinisections(s.file()), QStringList({"ordner", "trikot"}));
    // The game's three folders are written first, as the file is created.
    EXPECT_TRUE(readinisection("ordner", s.file()).first().startsWith("zorboconfig="));
    EXPECT_TRUE(zorbo::test::readBytes(s.file()).contains("\r\n"));
}

TEST(Settings, GameFolderFromRegistryUserWinsAndZeroCharactersGo)
{
    TempFolder dir;
    const QString machine = dir.path() + "/machine";
    const QString user = dir.path() + "/user";
    QDir().mkpath(machine);
    QDir().mkpath(user);
#ifdef Q_OS_WIN
    const Settings s = loadsettings(dir.path(), nullptr, fakeRegistry(machine, user + QChar(0)));
#else
    // Under Wine the registry holds Windows paths: map a prefix of our own.
    qputenv("WINEPREFIX", dir.path().toUtf8());
    QDir().mkpath(dir.path() + "/drive_c/Spiele/Zorbo");
    Settings s = loadsettings(dir.path(), nullptr, fakeRegistry("C:\\Spiele\\Machine", QString("C:\\spiele\\ZORBO") + QChar(0)));
    qunsetenv("WINEPREFIX");
    const QString game = dir.path() + "/drive_c/Spiele/Zorbo";
    EXPECT_EQ(s.folder(ZorboconfigFolder), game + "/config/");
    EXPECT_EQ(s.folder(ZorboresFolder), game + "/resfile/");
    EXPECT_EQ(s.folder(ZorbospielerFolder), game + "/spielerbilder/");
    EXPECT_FALSE(s.folder(ZorboconfigFolder).contains(QChar(0)));
#endif
    EXPECT_EQ(s.folder(ZorbodatenFolder), dir.path() + "/");
    EXPECT_EQ(s.folder(A4datenFolder), dir.path() + "/");

    // Only the machine's value: that one is used.
    TempFolder other;
    qputenv("WINEPREFIX", other.path().toUtf8());
    const Settings m = loadsettings(other.path(), nullptr, fakeRegistry("C:\\Spiele\\Machine", {}));
    qunsetenv("WINEPREFIX");
    EXPECT_TRUE(m.folder(ZorboresFolder).endsWith("/Spiele/Machine/resfile/")) << m.folder(ZorboresFolder).toStdString();
}

TEST(Settings, LineBreaksNeverReachTheFile)
{
    TempFolder dir;
    // A registry value that would add a section and a key of its own.
    QString message;
    const Settings s = loadsettings(dir.path(), &message,
                                    fakeRegistry({}, "C:\\Spiele\r\n[ordner]\r\nwappen=/anderswo\r\nx=C:\\Spiele"));
    const QByteArray ini = zorbo::test::readBytes(s.file());
    EXPECT_EQ(ini.count("\n"), 13) << ini.toStdString();
    EXPECT_EQ(ini.count("\r\n"), 13);
    EXPECT_EQ(readinisections(s.file()), QStringList({"ordner", "trikot"}));
    EXPECT_EQ(s.folder(WappenFolder), dir.path() + "/wappen/");
    EXPECT_EQ(s.folder(ZorboconfigFolder), dir.path() + "/") << "such a value names no folder";

    // A program folder whose name holds a line break cannot go into the file.
    TempFolder parent;
    const QString odd = parent.path() + "/zwei\nzeilen";
    ASSERT_TRUE(QDir().mkpath(odd));
    const Settings o = loadsettings(odd, &message, fakeRegistry({}, {}));
    EXPECT_FALSE(QFile::exists(o.file()));
    EXPECT_TRUE(message.contains("zorboeditor.ini"));
    EXPECT_EQ(o.folder(WappenFolder), odd + "/wappen/");
}

TEST(Settings, ExistingFileIsReadAsItStands)
{
    TempFolder dir;
    const QString file = dir.file("zorboeditor.ini");
    zorbo::test::writeBytes(file, "[ORDNER]\r\nwappen=\r\nGesicht = C:\\Bilder\\Gesichter\r\nattribute=/x/att\r\n"
                                  "trikot1=eigene\\trikots\r\na4daten=../anstoss\r\nzorbores=.\r\n"
                                  "[trikot]\r\nsatz=1\r\n");
    bool asked = false;
    const Settings s = loadsettings(dir.path(), nullptr, [&](RegRoot, const QString &, const QString &, QString &) {
        asked = true;
        return 2;
    });
    EXPECT_FALSE(asked) << "an existing file never asks the registry";
    EXPECT_EQ(s.folder(WappenFolder), dir.path() + "/wappen/") << "an empty key means the default";
    EXPECT_EQ(s.folder(GesichtFolder), "C:/Bilder/Gesichter/");
    EXPECT_EQ(s.folder(AttributeFolder), "/x/att/");
    // Relative folders lie below the program folder, never the working folder.
    EXPECT_EQ(s.folder(Trikot1Folder), dir.path() + "/eigene/trikots/");
    EXPECT_EQ(s.folder(A4datenFolder), QDir::cleanPath(dir.path() + "/..") + "/anstoss/");
    EXPECT_EQ(s.folder(ZorboresFolder), dir.path() + "/");
    EXPECT_EQ(s.folder(Trikot0Folder), dir.path() + "/trikot/original/") << "missing key gives the default";
    EXPECT_EQ(s.trikotsatz, 1);
    EXPECT_EQ(s.kitFolder(), s.folder(Trikot1Folder));
    EXPECT_EQ(zorbo::test::readBytes(file).count("\n"), 9) << "reading writes nothing";
}

TEST(Settings, MissingKitSectionReadsZeroWithoutWriting)
{
    TempFolder dir;
    const QByteArray content = "[ordner]\r\nwappen=/w/\r\n";
    zorbo::test::writeBytes(dir.file("zorboeditor.ini"), content);
    Settings s = loadsettings(dir.path(), nullptr, fakeRegistry({}, {}));
    EXPECT_EQ(s.trikotsatz, 0);
    EXPECT_EQ(zorbo::test::readBytes(s.file()), content);
    s.trikotsatz = 1;
    ASSERT_TRUE(writetrikotsatz(s));
    EXPECT_EQ(zorbo::test::readBytes(s.file()), content + "[trikot]\r\nsatz=1\r\n");
    EXPECT_EQ(loadsettings(dir.path()).trikotsatz, 1);
}

TEST(Settings, UnwritableFolderGivesDefaultsAndAMessage)
{
    TempFolder dir;
    const QString folder = dir.path() + "/fehlt/nicht/da"; // the folder does not exist: nothing can be written
    QString message;
    const Settings s = loadsettings(folder, &message, fakeRegistry({}, {}));
    EXPECT_TRUE(message.contains("zorboeditor.ini"));
    EXPECT_EQ(s.folder(WappenFolder), folder + "/wappen/");
    EXPECT_FALSE(QFile::exists(s.file()));
}

TEST(Settings, RecentFilesKeepTheEightNewestOnceAndOnlyWhatTheFileCanHold)
{
    TempFolder dir;
    Settings settings = loadsettings(dir.path());
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(writerecentfile(settings, dir.file(QStringLiteral("verein%1.tea").arg(i))));
    EXPECT_TRUE(writerecentfile(settings, dir.file("verein5.tea")));
    // Łódź is beyond code page 1252: the list stays as it was.
    EXPECT_FALSE(writerecentfile(settings, dir.file("Łódź.tea")));
    EXPECT_TRUE(writerecentfile(settings, dir.file("Großgmain.tea")));

    const QStringList expected = {dir.file("Großgmain.tea"), dir.file("verein5.tea"), dir.file("verein9.tea"),
                                  dir.file("verein8.tea"),   dir.file("verein7.tea"), dir.file("verein6.tea"),
                                  dir.file("verein4.tea"),   dir.file("verein3.tea")};
    EXPECT_EQ(settings.recentfiles, expected);
    EXPECT_EQ(loadsettings(dir.path()).recentfiles, expected);

    // An import keeps its format with the file; opened again by its ending,
    // the file loses it.
    EXPECT_TRUE(writerecentfile(settings, dir.file("verein3.tea"), "vereine"));
    EXPECT_TRUE(writerecentfile(settings, dir.file("verein4.tea"), "spieler"));
    EXPECT_TRUE(writerecentfile(settings, dir.file("verein4.tea")));
    const QHash<QString, QString> kinds = {{dir.file("verein3.tea"), "vereine"}};
    EXPECT_EQ(settings.recentkinds, kinds);
    EXPECT_EQ(loadsettings(dir.path()).recentkinds, kinds);
    EXPECT_EQ(loadsettings(dir.path()).recentfiles.mid(0, 2), (QStringList{dir.file("verein4.tea"), dir.file("verein3.tea")}));
}

TEST(Settings, RecentFilesWrittenBeforeImportsWereKeptStillRead)
{
    TempFolder dir;
    ASSERT_TRUE(zorbo::test::writeBytes(dir.file("zorboeditor.ini"), "[zuletzt]\r\ndatei1=C:\\Spiel\\a.tea\r\ndatei2=/home/b.aet\r\n"));
    const Settings settings = loadsettings(dir.path());
    EXPECT_EQ(settings.recentfiles, (QStringList{"C:\\Spiel\\a.tea", "/home/b.aet"}));
    EXPECT_TRUE(settings.recentkinds.isEmpty());
}
