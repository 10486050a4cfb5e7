// The picture formats on their own: channel rules, .gfp fields, TGA variants.
#include "resources/crestfixtures.h"
#include "resources/gfp.h"
#include "resources/pixels.h"
#include "resources/tga.h"

#include <gtest/gtest.h>
#include <utility>

using namespace zorbo;
using namespace zorbo::test;

TEST(CrestPixels, ExpansionFollowsTheOddAndEvenRule)
{
    const int in5[] = {0, 1, 2, 3, 30, 31}, out5[] = {0, 15, 16, 31, 240, 255};
    const int in6[] = {0, 1, 2, 3, 62, 63}, out6[] = {0, 7, 8, 15, 248, 255};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(expand5(in5[i]), out5[i]) << in5[i];
        EXPECT_EQ(expand6(in6[i]), out6[i]) << in6[i];
    }
    // 16 bits lose precision: red 200 comes back as 207, green 200 as 200.
    const int p = pack565(to5bit(200), to6bit(200), to5bit(0));
    EXPECT_EQ(expand5(red565(p)), 207);
    EXPECT_EQ(expand6(green565(p)), 200);
    EXPECT_EQ(blue565(pack565(0, 63, 31)), 31);
    EXPECT_EQ(green565(pack565(31, 0, 31)), 0);
}

TEST(CrestGfp, WriterKeepsTheTemplateAndSetsTheFields)
{
    // A template whose rest bytes all carry a mark must pass them on.
    GfpHeader templ;
    for (int i = 0; i < GfpHeaderSize; ++i)
        templ.bytes[size_t(i)] = char(0xA0 + i % 16);
    const QByteArray pixels = pattern16(3, 2);
    for (const bool compress : {true, false}) {
        const QByteArray gfp = makegfp(templ, 3, 2, pixels, compress);
        GfpHeader h;
        QByteArray back;
        ASSERT_TRUE(readgfp(gfp, QStringLiteral("t"), h, back).ok) << compress;
        EXPECT_EQ(back, pixels);
        EXPECT_EQ(h.bits(), 16);
        EXPECT_EQ(h.rawsize(), 12);
        EXPECT_EQ(h.method(), compress ? 11 : 0);
        EXPECT_EQ(h.flag(), compress ? templ.flag() : 1);
        EXPECT_EQ(h.stored(), compress ? int(gfp.size()) - 132 : 0);
        for (int i : {12, 30, 55, 60, 76, 90, 106, 131})
            EXPECT_EQ(h.bytes[size_t(i)], templ.bytes[size_t(i)]) << "rest byte " << i;
        EXPECT_EQ(h.bytes[4], 3);
        EXPECT_EQ(h.bytes[8], 2);
    }
}

TEST(CrestGfp, ReadsEightAndFifteenBitPictures)
{
    GfpHeader h;
    QByteArray px;
    ASSERT_TRUE(readgfp(gfpBytes(2, 2, QByteArray("\x10\x20\x30\x40", 4), false, 8), QStringLiteral("t"), h, px).ok);
    EXPECT_EQ(px, QByteArray("\x10\x20\x30\x40", 4));
    const QByteArray tga = writetga(2, 2, px, h.bytesPerPixel());
    EXPECT_EQ(tga.mid(18, 3), QByteArray("\x30\x30\x30", 3)); // bottom row first, grey
    ASSERT_TRUE(readgfp(gfpBytes(2, 1, pattern16(2, 1), true, 15), QStringLiteral("t"), h, px).ok);
    EXPECT_EQ(px, pattern16(2, 1));
}

TEST(CrestGfp, RefusesDamage)
{
    GfpHeader h;
    QByteArray px;
    const QByteArray good = gfpBytes(4, 4, pattern16(4, 4), true);
    QByteArray huge = good;
    huge[65] = 0x7F; // width 0x7F04
    QByteArray noMark = good;
    noMark[57] = 'X';
    QByteArray badStream = good;
    badStream[142] = char(badStream[142] ^ 0x55);
    QByteArray shortStream = gfpBytes(4, 4, pattern16(4, 3), true); // inflates to 3 rows only
    QByteArray tinyStored = good;
    tinyStored[96] = 4;
    QByteArray bomb = good; // a few bytes that claim 256 x 256 pixels
    bomb.replace(64, 8, QByteArray::fromHex("0001000000010000"));
    for (const QByteArray &bad : {good.left(131), good.left(good.size() - 1), huge, noMark, badStream, shortStream,
                                  tinyStored, bomb, gfpBytes(2, 2, pattern16(2, 2), false, 24)}) {
        const Result r = readgfp(bad, QStringLiteral("Der Eintrag x"), h, px);
        EXPECT_FALSE(r.ok);
        EXPECT_TRUE(r.message.startsWith(QStringLiteral("Der Eintrag x ist beschädigt"))) << r.message.toStdString();
    }
}

TEST(CrestGfp, PicturesStayWithinTheGamesSizes)
{
    // The most compressible picture allowed must pass the check against
    // streams too short to fill their picture; one pixel more is refused,
    // however small its stream.
    const QByteArray flat(CrestMaxSide * CrestMaxSide * 2, '\0');
    GfpHeader h;
    QByteArray px;
    ASSERT_TRUE(readgfp(gfpBytes(CrestMaxSide, CrestMaxSide, flat, true), QStringLiteral("t"), h, px).ok);
    EXPECT_EQ(px.size(), flat.size());
    for (const auto &[w, ht] : {std::pair{CrestMaxSide + 1, 1}, std::pair{1, CrestMaxSide + 1}, std::pair{4096, 4096}}) {
        const Result r = readgfp(gfpBytes(w, ht, QByteArray(qsizetype(w) * ht * 2, '\0'), true), QStringLiteral("t"), h, px);
        EXPECT_FALSE(r.ok) << w << "x" << ht;
        EXPECT_TRUE(r.message.contains(QStringLiteral("Bildgröße"))) << r.message.toStdString();
        TgaImage image;
        EXPECT_FALSE(readtga(tga24(w, ht, QByteArray(qsizetype(w) * ht * 3, '\0')), QStringLiteral("t"), image).ok);
    }
}

TEST(CrestGfp, ThirtyTwoBitPicturesTakeTheLastTwoBytesOfEachPixel)
{
    // Four bytes a pixel, (32 + 1) div 8; the two last ones hold the colour
    // as in a 16-bit picture.
    const QByteArray p16 = pattern16(3, 2);
    QByteArray p32;
    for (qsizetype i = 0; i < p16.size(); i += 2)
        p32 += QByteArray("\x5A\xA5", 2) + p16.mid(i, 2);
    for (const bool compress : {true, false}) {
        GfpHeader h;
        QByteArray px;
        const Result r = readgfp(gfpBytes(3, 2, p32, compress, 32), QStringLiteral("t"), h, px);
        ASSERT_TRUE(r.ok) << r.message.toStdString();
        EXPECT_EQ(h.bytesPerPixel(), 4);
        EXPECT_EQ(writetga(3, 2, px, h.bytesPerPixel()), writetga(3, 2, p16, 2));
    }
}

TEST(CrestTga, ReadsTheCommonVariants)
{
    // 3 x 2 pixels; rows from the top: (blue, green, red) then (white, black, grey).
    const QByteArray top = QByteArray::fromHex("FF0000 00FF00 0000FF");
    const QByteArray bottom = QByteArray::fromHex("FFFFFF 000000 808080");
    const QByteArray want = QByteArray::fromHex("1F00 E007 00F8 FFFF 0000 1084");
    auto header = [](int type, int depth, int descriptor) {
        QByteArray h = tga24(3, 2, {});
        h[2] = char(type);
        h[16] = char(depth);
        h[17] = char(descriptor);
        return h;
    };
    auto with32 = [](const QByteArray &bgr) {
        QByteArray out;
        for (int i = 0; i < bgr.size(); i += 3)
            out += bgr.mid(i, 3) + '\x7F';
        return out;
    };
    QByteArray id = header(2, 24, 0x20);
    id[0] = 5;
    const QList<QByteArray> files = {
        tga24(3, 2, top + bottom),
        header(2, 24, 0x20) + top + bottom,
        header(2, 32, 0x28) + with32(top + bottom),
        id + "12345" + top + bottom,
        // Run-length: a raw packet of 4 crossing the row end, then a run of 2 that is cut.
        header(10, 24, 0x20) + "\x03" + top + bottom.left(3) + "\x82" + QByteArray::fromHex("000000"),
    };
    QByteArray expectRle = want;
    expectRle.replace(10, 2, QByteArray::fromHex("0000"));
    for (int i = 0; i < files.size(); ++i) {
        TgaImage image;
        ASSERT_TRUE(readtga(files[i], QStringLiteral("t"), image).ok) << i;
        EXPECT_EQ(image.width, 3);
        EXPECT_EQ(image.height, 2);
        EXPECT_EQ(image.pixels.toHex(), (i == 4 ? expectRle : want).toHex()) << "variant " << i;
    }
}

TEST(CrestTga, RefusesWhatItCannotRead)
{
    const QByteArray good = tga24(2, 2, QByteArray(12, '\x40'));
    QByteArray mapped = good;
    mapped[2] = 1;
    QByteArray deep = good;
    deep[16] = 16;
    QByteArray wide = good;
    wide[13] = 0x20; // 8194 pixels
    QByteArray rle = good.left(18);
    rle[2] = 10;
    for (const QByteArray &bad : {good.left(17), good.left(good.size() - 1), mapped, deep, wide, rle + "\x83\x01"}) {
        TgaImage image;
        const Result r = readtga(bad, QStringLiteral("Die Datei x.tga"), image);
        EXPECT_FALSE(r.ok);
        EXPECT_TRUE(r.message.contains(QStringLiteral("x.tga ist kein lesbares TGA-Bild"))) << r.message.toStdString();
    }
}
