// The self-check of wa.res, and crests made from pictures.
#include "exchange/cfgcheck.h"
#include "resources/crestcheck.h"
#include "resources/crestfiles.h"
#include "resources/crestfixtures.h"
#include "resources/crestpicture.h"
#include "resources/crestrun.h"
#include "resources/gfp.h"
#include "resources/pixels.h"
#include "resources/resf.h"
#include "resources/tga.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

// Settings whose crest folder holds a default.gfp of the fixtures' form.
Settings crestSettings(const TempFolder &t)
{
    Settings s;
    const QString wappen = t.path() + "/wappen/";
    QDir().mkpath(wappen);
    writeBytes(wappen + "default.gfp", gfpBytes(1, 1, pattern16(1, 1), true));
    s.verzeichnisse[WappenFolder] = wappen;
    return s;
}

QString listed(const SelfCheckReport &r)
{
    QStringList lines;
    for (const FileDifference &d : r.differences)
        lines << d.place() + ": " + d.game + " | " + d.ours + " | " + d.reason;
    return lines.join('\n');
}

const FileDifference *ofCrest(const SelfCheckReport &r, const QString &crest)
{
    for (const FileDifference &d : r.differences) {
        if (d.crest == crest)
            return &d;
    }
    return nullptr;
}

} // namespace

TEST(CrestSelfCheck, ArchiveComesBackUnchangedOrEachCrestIsNamed)
{
    TempFolder t;
    const Settings settings = crestSettings(t);
    TempFolder game;
    QList<RawEntry> entries;
    for (int i = 0; i < 3; ++i)
        entries.append({"vereins_wappen_" + QByteArray::number(i + 1), gfpBytes(5 + i, 3, pattern16(5 + i, 3), true)});
    writeBytes(game.file("wa.res"), archiveBytes(entries));
    SelfCheckReport r = selfcheck(settings, game.path(), {crestcheck()});
    ASSERT_TRUE(r.result.ok) << r.result.message.toStdString();
    EXPECT_TRUE(r.differences.isEmpty()) << listed(r).toStdString();
    EXPECT_EQ(r.result.message, "Die Datei wa.res kommt unverändert zurück.");
    // With the two configuration files of the example world beside it.
    QFile::copy(QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg"), game.file("1_tm.cfg"));
    QFile::copy(QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg"), game.file("1_sp.cfg"));
    r = selfcheck(settings, game.path(), configchecks() << crestcheck());
    EXPECT_EQ(r.checked.size(), 3);
    EXPECT_EQ(r.result.message, "Alle drei Dateien kommen unverändert zurück.") << listed(r).toStdString();

    // Stored without zlib, 24 bits a pixel, a header byte of its own, and an entry that is no picture.
    QByteArray ownHead = gfpBytes(4, 4, pattern16(4, 4), true);
    ownHead[20] = 'X';
    QByteArray deep = gfpBytes(2, 2, QByteArray(12, '\x40'), false, 24);
    entries = {{"vereins_wappen_1", gfpBytes(5, 3, pattern16(5, 3), false)},
               {"vereins_wappen_2", deep},
               {"vereins_wappen_3", ownHead},
               {"musik", QByteArray(16, 'm'), 7},
               {"vereins_wappen_4", gfpBytes(2, 2, pattern16(2, 2), true)}};
    writeBytes(game.file("wa.res"), archiveBytes(entries));
    r = selfcheck(settings, game.path(), {crestcheck()});
    ASSERT_TRUE(r.result.ok) << r.result.message.toStdString();
    const FileDifference *stored = ofCrest(r, "vereins_wappen_1");
    ASSERT_NE(stored, nullptr) << listed(r).toStdString();
    EXPECT_TRUE(stored->reason.contains("Verfahren 0")) << stored->reason.toStdString();
    const FileDifference *bits = ofCrest(r, "vereins_wappen_2");
    ASSERT_NE(bits, nullptr);
    EXPECT_EQ(bits->game, "24 Bit je Pixel");
    const FileDifference *head = ofCrest(r, "vereins_wappen_3");
    ASSERT_NE(head, nullptr);
    EXPECT_TRUE(head->reason.contains("default.gfp")) << head->reason.toStdString();
    EXPECT_TRUE(head->game.startsWith("Kopf ab Byte 20: 58")) << head->game.toStdString();
    const FileDifference *other = ofCrest(r, "musik");
    ASSERT_NE(other, nullptr);
    EXPECT_TRUE(other->reason.contains("kein Bild")) << other->reason.toStdString();
    EXPECT_EQ(other->place(), "wa.res, Wappen musik");
    EXPECT_EQ(ofCrest(r, "vereins_wappen_4"), nullptr) << listed(r).toStdString();
}

namespace {

// A picture of width x height: the left half opaque in colour, the right
// half fully transparent.
QImage halfPicture(int width, int height, QColor colour)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.fillRect(0, 0, width / 2, height, colour);
    return image;
}

// The crest's pixel as the game's 16 bits hold it, read back from its TGA.
int tgaPixel(const TgaImage &tga, int x, int y)
{
    const qsizetype at = (qsizetype(y) * tga.width + x) * 2;
    return (unsigned char)tga.pixels[at] | (unsigned char)tga.pixels[at + 1] << 8;
}

constexpr int pureRed = pack565(31, 0, 0);
constexpr int pureWhite = pack565(31, 63, 31);

} // namespace

TEST(CrestPicture, FitAndCropKeepProportionsAndFillTransparency)
{
    // Odd sides: 30 x 7 fits as 64 x 15, the right half shows the background.
    CrestPictureOptions fit;
    QImage crest = crestpicture(halfPicture(30, 7, QColor(255, 0, 0)), fit);
    EXPECT_EQ(crest.size(), QSize(64, 15));
    TgaImage tga;
    ASSERT_TRUE(readtga(cresttga(crest), "crest", tga).ok);
    EXPECT_EQ(tga.width, 64);
    EXPECT_EQ(tga.height, 15);
    EXPECT_EQ(tgaPixel(tga, 2, 1), pureRed);
    EXPECT_EQ(tgaPixel(tga, 61, 13), pureWhite);

    // Crop takes the middle square at 64 x 64; a chosen background shows
    // through.
    CrestPictureOptions crop{CrestFit::Crop, QColor(0, 0, 255)};
    crest = crestpicture(halfPicture(9, 3, QColor(255, 0, 0)), crop);
    ASSERT_TRUE(readtga(cresttga(crest), "crest", tga).ok);
    EXPECT_EQ(tga.width, 64);
    EXPECT_EQ(tga.height, 64);
    // Columns 3 to 5 of 9: column 3 is red, column 5 transparent.
    EXPECT_EQ(tgaPixel(tga, 1, 30), pureRed);
    EXPECT_EQ(tgaPixel(tga, 62, 30), pack565(0, 0, 31));

    // A tall picture fits by its height.
    EXPECT_EQ(crestpicture(halfPicture(5, 11, Qt::green), fit).size(), QSize(29, 64));
    // Colours are cut to the game's bits and widened as the crest files are.
    crest = crestpicture(halfPicture(2, 2, QColor(100, 101, 102)), fit);
    EXPECT_EQ(crest.pixel(0, 0), qRgb(expand5(100 / 8), expand6(101 / 4), expand5(102 / 8)));
}

TEST(CrestPicture, EachFormatBecomesACrestTheExportPacksUnchanged)
{
    TempFolder t;
    const QString wappen = t.path() + "/wappen/";
    QDir().mkpath(wappen);
    writeBytes(wappen + "default.gfp", gfpBytes(1, 1, pattern16(1, 1), true));
    // The colour lies in the middle of its 16-bit step, so that a lossy
    // format's small errors stay within it.
    const QColor colour(132, 66, 196);
    const int expected = pack565(132 / 8, 66 / 4, 196 / 8);
    QImage solid(40, 20, QImage::Format_RGB32);
    solid.fill(colour);
    QStringList names;
    int number = 1;
    for (const char *format : {"png", "jpg", "bmp", "webp"}) {
        if (!QImageWriter::supportedImageFormats().contains(format)) {
            EXPECT_NE(QByteArray(format), "png");
            continue;
        }
        const QString file = t.file(QStringLiteral("bild.") + format);
        QImageWriter writer(file, format);
        writer.setQuality(100);
        ASSERT_TRUE(writer.write(solid)) << format;
        QImage picture;
        ASSERT_TRUE(loadpicture(file, picture).ok) << format;
        ASSERT_TRUE(writecrest(wappen, number, crestpicture(picture, {})).ok);
        TgaImage tga;
        ASSERT_TRUE(readtga(crestfile(wappen, number), tga).ok);
        EXPECT_EQ(QSize(tga.width, tga.height), QSize(64, 32)) << format;
        EXPECT_EQ(tgaPixel(tga, 30, 16), expected) << format;
        names << QStringLiteral("vereins_wappen_%1").arg(number++);
    }
    // GIF: Qt reads but does not write it; one red pixel, by hand.
    const QByteArray gif = QByteArray::fromHex("474946383961010001008000" "00ff0000000000" "2c00000000010001000002024401003b");
    writeBytes(t.file("bild.gif"), gif);
    QImage picture;
    ASSERT_TRUE(loadpicture(t.file("bild.gif"), picture).ok);
    ASSERT_TRUE(writecrest(wappen, number, crestpicture(picture, {})).ok);
    names << QStringLiteral("vereins_wappen_%1").arg(number);

    // The export packs each crest with the TGA's pixels, and an import
    // writes the same file again.
    QByteArray lst = "[wa]\r\ndatei=wa.res\r\nanzahl=" + QByteArray::number(names.size()) + "\r\ntype=14\r\n";
    for (const QString &n : names)
        lst += "[" + n.toLatin1() + "]\r\ndatei=" + n.toLatin1() + ".gfp\r\n";
    writeBytes(wappen + "wa.lst", lst);
    const CrestRunReport packed = exportwappen(t.file("wa.res"), wappen);
    ASSERT_TRUE(packed.result.ok) << packed.result.message.toStdString();
    EXPECT_TRUE(packed.findings.isEmpty());
    const QString back = t.path() + "/zurueck/";
    QDir().mkpath(back);
    QFile::copy(wappen + "wa.lst", back + "wa.lst");
    ASSERT_TRUE(importwappen(t.file("wa.res"), back).result.ok);
    for (const QString &n : names)
        EXPECT_EQ(readBytes(back + n + ".tga"), readBytes(wappen + n + ".tga")) << n.toStdString();
    TgaImage tga;
    ASSERT_TRUE(readtga(back + names.last() + ".tga", tga).ok);
    EXPECT_EQ(tgaPixel(tga, 10, 10), pureRed);
}

TEST(CrestPicture, AFolderRunThatFailsOnOneCrestLeavesEveryCrestAsItWas)
{
    TempFolder t;
    const QString wappen = t.path() + "/wappen/";
    QDir().mkpath(wappen);
    QImage wide(40, 20, QImage::Format_RGB32);
    wide.fill(Qt::red);
    QImage square(40, 40, QImage::Format_RGB32);
    square.fill(Qt::blue);
    ASSERT_TRUE(wide.save(t.file("1.png")) && square.save(t.file("2.png")));
    writeBytes(crestfile(wappen, 1), "alt 1");
    writeBytes(crestfile(wappen, 2), "alt 2");
    const QList<PictureTarget> targets{{t.file("1.png"), 1, "Eins", "vereine", 1, false},
                                       {t.file("2.png"), 2, "Zwei", "vereine", 2, false}};
    Database db(":memory:");

    // Files may grow only so far, as on a nearly full disk: the wide crest
    // (64 x 32) fits, the square one (64 x 64) doesn't.
    struct rlimit before {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = before;
    small.rlim_cur = 9000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_THROW(crestsfrompictures(db, targets, wappen, {}, {}), Fault);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_EQ(readBytes(crestfile(wappen, 1)), "alt 1");
    EXPECT_EQ(readBytes(crestfile(wappen, 2)), "alt 2");
    EXPECT_EQ(QDir(wappen).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).size(), 2);

    // With room, both come in, and the pictures they replace are kept (the
    // history keeps only crest numbers).
    const QList<PictureRunLine> lines = crestsfrompictures(db, targets, wappen, {}, {});
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(readBytes(crestfile(wappen, 1)).size(), 18 + 64 * 32 * 3);
    EXPECT_EQ(readBytes(crestfile(wappen, 2)).size(), 18 + 64 * 64 * 3);
    const QStringList kept = QDir(wappen + "ersetzt").entryList(QDir::Files, QDir::Name);
    ASSERT_EQ(kept.size(), 2);
    EXPECT_TRUE(kept[0].startsWith("vereins_wappen_1_")) << kept[0].toStdString();
    EXPECT_EQ(readBytes(wappen + "ersetzt/" + kept[0]), "alt 1");
    EXPECT_EQ(readBytes(wappen + "ersetzt/" + kept[1]), "alt 2");
    EXPECT_TRUE(lines[0].text.endsWith("das bisherige Wappen liegt in ersetzt/" + kept[0])) << lines[0].text.toStdString();
}

TEST(CrestPicture, AReplacedCrestPictureIsKeptUnlessItIsTheDefaultOrTheSame)
{
    TempFolder t;
    const QString wappen = t.path() + "/wappen/";
    QDir().mkpath(wappen);
    writeBytes(wappen + "default.tga", "standard");
    writeBytes(crestfile(wappen, 3), "standard"); // a copy of the default crest
    writeBytes(crestfile(wappen, 4), "eigenes Bild");
    QImage red(8, 8, QImage::Format_RGB32);
    red.fill(Qt::red);
    const QImage crest = crestpicture(red, {});
    QString kept = "x";
    ASSERT_TRUE(writecrest(wappen, 3, crest, &kept).ok);
    EXPECT_TRUE(kept.isEmpty());
    ASSERT_TRUE(writecrest(wappen, 3, crest, &kept).ok);
    EXPECT_TRUE(kept.isEmpty()) << "the same picture again";
    ASSERT_TRUE(writecrest(wappen, 4, crest, &kept).ok);
    EXPECT_TRUE(kept.startsWith("ersetzt/vereins_wappen_4_")) << kept.toStdString();
    EXPECT_EQ(readBytes(wappen + kept), "eigenes Bild");
    // A second replacement in the same second keeps its picture beside the first.
    writeBytes(crestfile(wappen, 4), "zweites Bild");
    QString second;
    ASSERT_TRUE(writecrest(wappen, 4, crest, &second).ok);
    EXPECT_NE(second, kept);
    EXPECT_EQ(readBytes(wappen + second), "zweites Bild");
    EXPECT_EQ(QDir(wappen + "ersetzt").entryList(QDir::Files).size(), 2);

    // A picture that can't be kept (a file stands where the folder would) is not replaced.
    const QString blocked = t.path() + "/blockiert/";
    QDir().mkpath(blocked);
    writeBytes(blocked + "ersetzt", "");
    writeBytes(crestfile(blocked, 5), "drittes Bild");
    const Result refused = writecrest(blocked, 5, crest, &kept);
    EXPECT_FALSE(refused.ok);
    EXPECT_TRUE(refused.message.startsWith("Das bisherige Wappen 5 (")) << refused.message.toStdString();
    EXPECT_EQ(readBytes(crestfile(blocked, 5)), "drittes Bild");
}

TEST(CrestPicture, WebpWhenThePluginIsThere)
{
    if (!QImageReader::supportedImageFormats().contains("webp"))
        GTEST_SKIP() << "Qt's WebP plugin is missing (Debian: qt6-image-formats-plugins)";
    TempFolder t;
    QImage image = halfPicture(6, 6, QColor(255, 0, 0));
    QImageWriter writer(t.file("bild.webp"), "webp");
    writer.setQuality(100);
    ASSERT_TRUE(writer.write(image));
    QImage picture;
    ASSERT_TRUE(loadpicture(t.file("bild.webp"), picture).ok);
    TgaImage tga;
    ASSERT_TRUE(readtga(cresttga(crestpicture(picture, {})), "crest", tga).ok);
    EXPECT_EQ(tgaPixel(tga, 3, 30), pureRed);
    EXPECT_EQ(tgaPixel(tga, 60, 30), pureWhite);
}
