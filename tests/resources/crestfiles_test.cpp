#include "resources/crestfiles.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::TempFolder;
using zorbo::test::readBytes;
using zorbo::test::writeBytes;

TEST(CrestFiles, MissingCrestBecomesACopyOfTheDefault)
{
    TempFolder dir;
    const QString folder = dir.path() + "/";

    QString path;
    EXPECT_FALSE(ensurecrest(folder, 5, path)) << "no default.tga yet";
    ASSERT_TRUE(writeBytes(folder + "default.tga", "neutral"));
    ASSERT_TRUE(writeBytes(folder + "vereins_wappen_7.tga", "own"));
    ASSERT_TRUE(ensurecrest(folder, 5, path));
    EXPECT_EQ(readBytes(path), "neutral");
    ASSERT_TRUE(ensurecrest(folder, 7, path));
    EXPECT_EQ(readBytes(path), "own");
}

TEST(CrestFiles, MaResIsCopiedOnlyOverAnInstalledGame)
{
    TempFolder dir;
    const QString kits = dir.path() + "/trikot/";
    const QString game = dir.path() + "/res/";
    QDir().mkpath(kits);
    QDir().mkpath(game);
    ASSERT_TRUE(writeBytes(kits + "ma.res", QByteArray(3 << 20, 'k')));

    Result r = copymares(kits, game);
    EXPECT_FALSE(r);
    EXPECT_EQ(r.message, "Kein Zorbo installiert");
    EXPECT_FALSE(QFileInfo::exists(game + "ma.res"));

    ASSERT_TRUE(writeBytes(game + "ma.res", "old"));
    ASSERT_TRUE(copymares(kits, game));
    EXPECT_EQ(readBytes(game + "ma.res"), QByteArray(3 << 20, 'k'));

    // A missing source says so and leaves the game's archive as it was.
    ASSERT_TRUE(writeBytes(game + "ma.res", "old"));
    r = copymares(dir.path() + "/leer/", game);
    EXPECT_FALSE(r);
    EXPECT_TRUE(r.message.contains("leer/ma.res")) << r.message.toStdString();
    EXPECT_EQ(readBytes(game + "ma.res"), "old");
}
