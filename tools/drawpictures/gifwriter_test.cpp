#include "gifwriter.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>
#include <gtest/gtest.h>

using namespace zorbo;

namespace {

QImage decode(const QByteArray &gif)
{
    QBuffer buffer;
    buffer.setData(gif);
    QImageReader reader(&buffer, "gif");
    return reader.read().convertToFormat(QImage::Format_ARGB32);
}

// Noise fills the LZW table many times over, so the table resets are used.
QImage noise(int colours, bool holes)
{
    QImage img(200, 150, QImage::Format_ARGB32);
    quint32 x = 12345u + quint32(colours);
    for (int y = 0; y < img.height(); ++y)
        for (int col = 0; col < img.width(); ++col) {
            x = x * 1103515245u + 12345u;
            const int c = int((x >> 16) % quint32(colours));
            img.setPixel(col, y, holes && c == 0 ? 0u : qRgb(c, 255 - c, (c * 7) % 256));
        }
    return img;
}

int differences(const QImage &drawn, const QImage &read)
{
    int n = 0;
    for (int y = 0; y < drawn.height(); ++y)
        for (int x = 0; x < drawn.width(); ++x) {
            const QRgb a = drawn.pixel(x, y), b = read.pixel(x, y);
            n += qAlpha(a) < 128 ? qAlpha(b) != 0 : a != b;
        }
    return n;
}

} // namespace

TEST(GifWriter, QtReadsBackEveryPixel)
{
    for (int colours : {1, 2, 16, 200, 256}) {
        for (bool holes : {false, true}) {
            const QImage img = noise(colours, holes);
            const QImage back = decode(encodegif(img));
            ASSERT_EQ(back.size(), img.size()) << colours;
            EXPECT_EQ(differences(img, back), 0) << colours << " colours, holes " << holes;
        }
    }
}

TEST(GifWriter, TooManyColoursFallOnTheNearestAndTheOutputIsStable)
{
    QImage img(64, 64, QImage::Format_ARGB32);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            img.setPixel(x, y, qRgb(x * 4, y * 4, 128));
    const QByteArray gif = encodegif(img);
    EXPECT_EQ(gif, encodegif(img));
    const QImage back = decode(gif);
    ASSERT_EQ(back.size(), img.size());
    int worst = 0;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const QRgb a = img.pixel(x, y), b = back.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b))});
        }
    EXPECT_LE(worst, 40) << "about half a step of the fallback cube";
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
