// The RESF archive: the worked example byte for byte, both layouts, and
// archives that lie about themselves.
#include "platform/profile.h"
#include "resources/convert.h"
#include "resources/crestfixtures.h"
#include "resources/crestrun.h"
#include "resources/resf.h"
#include "resources/reslist.h"
#include "resources/resfwriter.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

const QString example = dataPath(QStringLiteral("resf/worked-example"));

QString wappenOf(const TempFolder &t)
{
    return t.path() + QStringLiteral("/wappen/");
}

} // namespace

TEST(CrestArchive, WorkedExampleByteForByte)
{
    TempFolder t;
    const QString wappen = wappenOf(t);
    copyFolder(example, wappen);
    QFile::copy(example + "/default.gfp", wappen + "temp.gfp");
    ASSERT_TRUE(tga2gfp(wappen + "vereins_wappen_7.tga", wappen + "temp.gfp", true).ok);
    EXPECT_EQ(readBytes(wappen + "temp.gfp").toHex(), readBytes(example + "/expected.gfp").toHex());

    const CrestRunReport run = exportwappen(t.file("wa.res"), wappen);
    ASSERT_TRUE(run.result.ok) << run.result.message.toStdString();
    EXPECT_TRUE(run.findings.isEmpty()) << findinglines(run.findings).join('\n').toStdString();
    EXPECT_EQ(run.written, 1);
    EXPECT_EQ(readBytes(t.file("wa.res")).toHex(), readBytes(example + "/expected.res").toHex());
    EXPECT_FALSE(QFile::exists(wappen + "temp")); // no scratch files

    // And back: red and white survive the 16-bit form unchanged.
    QFile::remove(wappen + "vereins_wappen_7.tga");
    const CrestRunReport back = importwappen(example + "/expected.res", wappen);
    ASSERT_TRUE(back.result.ok) << back.result.message.toStdString();
    EXPECT_EQ(back.written, 1);
    EXPECT_EQ(readBytes(wappen + "vereins_wappen_7.tga"), readBytes(example + "/vereins_wappen_7.tga"));
}

TEST(CrestArchive, SizedLayoutAndEmptyArchive)
{
    TempFolder t;
    const QByteArray gfp = readBytes(example + "/expected.gfp");
    QList<WappenItem> items = {{"erster", gfp}, {"zwei ter", gfp.left(140)}};
    ASSERT_TRUE(packresf(t.file("16.res"), 16, items).ok);
    const QByteArray a = readBytes(t.file("16.res"));
    // Header, Long 152 + picture, Long 140 + bytes, directory, names.
    ASSERT_EQ(a.size(), 12 + 4 + 152 + 4 + 140 + 2 * 8 + 2 * 256);
    EXPECT_EQ(a.mid(8, 4).toHex(), "38010000");  // dirpos 312
    EXPECT_EQ(a.mid(12, 4).toHex(), "98000000"); // length 152
    EXPECT_EQ(a.mid(312, 16).toHex(), "100000000c00000010000000a8000000");
    EXPECT_EQ(a.mid(328 + 256, 8), QByteArray("zwei\0ter", 8)); // blanks end the name

    QList<ResListing> rows;
    ASSERT_TRUE(listresf(t.file("16.res"), rows).ok);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].size, 152);
    EXPECT_EQ(rows[0].width, 2);
    EXPECT_EQ(rows[1].name, "zwei");
    EXPECT_EQ(rows[1].size, 140);

    ASSERT_TRUE(packresf(t.file("0.res"), 14, {}).ok);
    EXPECT_EQ(readBytes(t.file("0.res")), QByteArray("RESF\0\0\0\0\x0c\0\0\0", 12));
    const CrestRunReport run = importwappen(t.file("0.res"), t.path() + "/w/");
    EXPECT_TRUE(run.result.ok);
    EXPECT_EQ(run.written, 0);
}

TEST(CrestArchive, DamagedHeadersStopTheRun)
{
    const QByteArray good = readBytes(example + "/expected.res");
    auto patched = [&](int at, QByteArray bytes) {
        QByteArray a = good;
        a.replace(at, bytes.size(), bytes);
        return a;
    };
    const QList<QByteArray> bad = {
        good.left(11),
        patched(4, QByteArray::fromHex("ffffffff")),  // count -1
        patched(4, QByteArray::fromHex("ffffff7f")),  // count 2^31 - 1
        patched(4, QByteArray::fromHex("02000000")),  // second entry's directory missing
        patched(8, QByteArray::fromHex("0a000000")),  // dirpos inside the header
        patched(8, QByteArray::fromHex("00000080")),  // dirpos negative
        good.left(good.size() - 1),                   // names cut short
    };
    TempFolder t;
    for (int i = 0; i < bad.size(); ++i) {
        writeBytes(t.file("bad.res"), bad[i]);
        const CrestRunReport run = importwappen(t.file("bad.res"), t.path() + "/wappen/");
        EXPECT_FALSE(run.result.ok) << i;
        EXPECT_TRUE(run.result.message.contains("bad.res")) << run.result.message.toStdString();
    }
    writeBytes(t.file("text.res"), "nothing of the kind");
    EXPECT_FALSE(isresfile(t.file("text.res")));
    EXPECT_TRUE(importwappen(t.file("text.res"), t.path() + "/wappen/").result.message.contains("kein RESF-Archiv"));
    EXPECT_EQ(filesBelow(t.path() + "/wappen"), QStringList());
}

TEST(CrestArchive, DamagedEntriesAreSkippedByName)
{
    const QByteArray ok = readBytes(example + "/expected.gfp");
    QByteArray huge = ok;
    huge[6] = huge[66] = 0x10; // width 0x100002
    QByteArray broken = ok;
    broken[145] = char(broken[145] ^ 0x5A);
    const QList<RawEntry> entries = {
        {"../ausbruch", ok}, {"a/b", ok}, {"c:d", ok}, {"steuer\x01", ok}, {QByteArray(256, 'x'), ok},
        {"", ok}, {"riesig", huge}, {"kaputt", broken}, {"abgeschnitten", ok.left(100)}, {"gut", ok},
        {"schrift", ok, 16},
    };
    const QByteArray archive = archiveBytes(entries);
    TempFolder t;
    const QString wappen = t.path() + "/wappen/";
    QDir().mkpath(wappen);
    writeBytes(wappen + "kaputt.tga", "the user's own crest");
    writeBytes(t.file("wa.res"), archive);
    const CrestRunReport run = importwappen(t.file("wa.res"), wappen);
    ASSERT_TRUE(run.result.ok) << run.result.message.toStdString();
    EXPECT_EQ(run.written, 1);
    EXPECT_EQ(filesBelow(t.path()), QStringList({"wa.res", "wappen/gut.tga", "wappen/kaputt.tga"}));
    EXPECT_EQ(run.missingFromList, QStringList({"gut"})) << "only crests that were written";
    EXPECT_EQ(readBytes(wappen + "kaputt.tga"), "the user's own crest");
    const QString all = findinglines(run.findings).join('\n');
    for (const char *word : {"„../ausbruch“", "„..“", "„/“", "„:“", "Steuerzeichen", "länger als 255", "leer", "riesig", "kaputt",
                             "zlib", "abgeschnitten", "keine Bilder"})
        EXPECT_TRUE(all.contains(QString::fromUtf8(word))) << word << "\n" << all.toStdString();
}

TEST(CrestArchive, ExtractCopiesThePictureAndKeepsToItsFolder)
{
    const QByteArray ok = readBytes(example + "/expected.gfp");
    ResArchive a{"wa.res", archiveBytes({{"eins", ok}, {"../zwei", ok}})};
    ResHeader h;
    QList<ResEntry> dir;
    ASSERT_TRUE(readresheader(a, h) && readresdir(a, h, dir));
    TempFolder t;
    QString name;
    ASSERT_TRUE(extractgfp(a, h, dir[0], t.path() + "/temp", name).ok);
    EXPECT_EQ(name, "eins");
    EXPECT_EQ(readBytes(t.path() + "/temp/eins.gfp"), ok);
    EXPECT_FALSE(extractgfp(a, h, dir[1], t.path() + "/temp", name).ok);
    EXPECT_EQ(filesBelow(t.path()), QStringList({"temp/eins.gfp"}));
    ASSERT_TRUE(gfp2tga(t.path() + "/temp/eins.gfp", t.path() + "/eins.tga").ok);
    EXPECT_EQ(readBytes(t.path() + "/eins.tga"), readBytes(example + "/vereins_wappen_7.tga"));
}

TEST(CrestArchive, OffsetsOutsideTheResources)
{
    const QByteArray ok = readBytes(example + "/expected.gfp");
    for (const QByteArray &offset : {QByteArray::fromHex("00000000"), QByteArray::fromHex("a4000000"),
                                     QByteArray::fromHex("ffffff7f"), QByteArray::fromHex("f0ffffff")}) {
        QByteArray a = archiveBytes({{"x", ok}});
        a.replace(168, 4, offset);
        TempFolder t;
        writeBytes(t.file("wa.res"), a);
        const CrestRunReport run = importwappen(t.file("wa.res"), t.path() + "/w/");
        EXPECT_TRUE(run.result.ok);
        EXPECT_EQ(run.written, 0);
        ASSERT_EQ(run.findings.size(), 1);
        EXPECT_TRUE(run.findings[0].text.contains("Eintrag x in wa.res")) << run.findings[0].text.toStdString();
    }
}
