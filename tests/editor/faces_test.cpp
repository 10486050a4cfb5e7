#include "core/schema.h"
#include "editor/facecode.h"
#include "editor/facepictures.h"
#include "support/testsupport.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace zorbo;

namespace {

// A gesicht folder with `counts` pictures per part of the given colour (empty files do).
void fill(const QString &folder, int farbe, std::array<int, 5> counts)
{
    QFile(folder + facebackground(farbe)).open(QIODevice::WriteOnly);
    for (int part = 0; part < 5; ++part)
        for (int n = 1; n <= counts[size_t(part)]; ++n)
            QFile(folder + facepicture(farbe, part, n)).open(QIODevice::WriteOnly);
}

} // namespace

TEST(FaceCode, DigitsAndColourBothWaysAndDarkSkinHasNoChinDigit)
{
    const Face light{0, {2, 3, 4, 5, 6}};
    const qint64 code = 2 * 67108864LL + 3 * 1048576 + 4 * 8192 + 5 * 128 + 6 * 4;
    EXPECT_EQ(encodeface(light), code);
    EXPECT_EQ(decodeface(code).farbe, 0);
    EXPECT_EQ(decodeface(code).digits, light.digits);
    const qint64 dark = encodeface({1, {4, 2, 8, 1, 9}});
    EXPECT_EQ(dark, 4 * 67108864LL + 2 * 1048576 + 8 * 8192 + 1 * 128 + 1);
    EXPECT_EQ(decodeface(dark).farbe, 1);
    EXPECT_EQ(decodeface(dark).digits, (std::array<int, 5>{4, 2, 8, 1, 0}));

    EXPECT_EQ(decodeface(1).farbe, 1);
    EXPECT_EQ(decodeface(1).digits, (std::array<int, 5>{0, 0, 0, 0, 0}));
    EXPECT_EQ(decodeface(2).farbe, 0) << "low bits 2 count as the light colour";
    EXPECT_EQ(decodeface(3 * 1048576 + 3).farbe, 0);
}

TEST(FacePictures, CheckgesichtRepairsToTheHighestPictureBelow)
{
    test::TempFolder dir;
    const QString folder = dir.path() + "/";
    fill(folder, 0, {12, 3, 7, 1, 5});
    QFile::remove(folder + facepicture(0, Haare, 5));
    fill(folder, 1, {2, 2, 2, 2, 1});
    QFile(folder + "sp_gesicht_weiss_nase_13.txt").open(QIODevice::WriteOnly); // not a picture
    const FacePictures pics(folder);

    EXPECT_EQ(pics.checkgesicht(encodeface({0, {40, 2, 4, 0, 4}})), encodeface({0, {11, 2, 3, 0, 4}}))
        << "digit 40 with 12 pictures falls to 11; a gap falls to the picture below it";
    const qint64 made = encodeface({0, {11, 2, 6, 0, 4}});
    EXPECT_EQ(pics.checkgesicht(made), made) << "a code within the pictures comes back unchanged";
    EXPECT_EQ(pics.checkgesicht(encodeface({1, {5, 1, 0, 9, 0}})), encodeface({1, {1, 1, 0, 1, 0}}));

    QFile::remove(folder + facepicture(0, Augen, 1));
    const FacePictures without(folder);
    EXPECT_EQ(without.standin(0, Augen, 3), 0) << "no picture down to 1: digit 0";
    EXPECT_TRUE(without.path(0, Augen, 3).isEmpty()) << "and nothing to show for that part";
    EXPECT_EQ(without.path(0, Haare, 4), folder + facepicture(0, Haare, 4));
}

TEST(FacePictures, CheckallgesichterWritesOnlyBrokenCodes)
{
    test::TempFolder dir;
    const QString folder = dir.path() + "/";
    fill(folder, 0, {12, 3, 7, 1, 5});
    fill(folder, 1, {2, 2, 2, 2, 1});
    OpenedDb o = opendb(dir.file("zorbo.mdb"));
    Database &db = *o.db;
    db.run("DELETE FROM spieler");
    const qint64 good = encodeface({0, {1, 1, 1, 0, 1}}), broken = encodeface({0, {40, 1, 1, 0, 1}});
    const qint64 darkBroken = encodeface({1, {7, 0, 0, 0, 0}});
    for (auto [nr, code] : {std::pair<int, qint64>{1, good}, {2, broken}, {3, darkBroken}})
        db.run("INSERT INTO spieler (NUMMER, NAME, GESICHT) VALUES (?1, 'X', ?2)", nr, code);
    qint64 done = -1, total = -1;
    const FaceCheck check = checkallgesichter(db, FacePictures(folder), [&](qint64 d, qint64 t) {
        done = d;
        total = t;
        return true;
    });
    ASSERT_TRUE(check.result.ok) << check.result.message.toStdString();
    EXPECT_EQ(check.corrected, 2);
    EXPECT_EQ(std::pair(done, total), std::pair(qint64(3), qint64(3)));
    EXPECT_EQ(db.scalar("SELECT GESICHT FROM spieler WHERE NUMMER = 2").toLongLong(),
              encodeface({0, {11, 1, 1, 0, 1}}));
    EXPECT_EQ(db.scalar("SELECT GESICHT FROM spieler WHERE NUMMER = 3").toLongLong(), encodeface({1, {1, 0, 0, 0, 0}}));
    EXPECT_EQ(checkallgesichter(db, FacePictures(folder)).corrected, 0) << "a second run finds nothing";
}
