// Crest runs over 1,000 crests of 100 x 100 pixels: median of 5 imports and
// of 5 exports, beside plain compress2 over the same pixel data, the floor
// that an export cannot beat.
//   bench-crests [FOLDER]   (default: a temporary folder)
#include "resources/crestrun.h"
#include "resources/filebytes.h"
#include "resources/gfp.h"
#include "resources/tga.h"

#include "timing.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>
#include <zlib.h>

using namespace zorbo;

namespace {

constexpr int Crests = 1000;
constexpr int Side = 100;

// A crest as clubs draw them: flat colours, a shield with stripes and a
// ring, soft shading from top to bottom, a little grain.
QByteArray crestPixels(int n)
{
    QByteArray out(Side * Side * 2, Qt::Uninitialized);
    unsigned grain = 2166136261u ^ unsigned(n);
    const int stripe = 6 + n % 9;
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x) {
            grain = grain * 1103515245u + 12345u;
            const int dx = x - Side / 2, dy = y - Side / 2;
            const bool shield = std::abs(dx) < 40 - std::max(0, y - 60) && y > 8 && y < 96;
            const bool ring = std::abs(dx * dx + dy * dy - 400) < 60;
            int r = 250, g = 250, b = 250;
            if (shield) {
                const bool band = (x / stripe) % 2 == 0;
                r = band ? (n * 53) % 256 : 240;
                g = band ? (n * 97) % 256 : 30 + y;
                b = band ? (n * 31) % 256 : 40;
                const int shade = y / 3 + int(grain >> 29);
                r = std::max(0, r - shade), g = std::max(0, g - shade), b = std::max(0, b - shade);
            }
            if (ring)
                r = g = b = 20;
            const int p = (r / 8) << 11 | (g / 4) << 5 | (b / 8);
            out[2 * (y * Side + x)] = char(p & 0xFF);
            out[2 * (y * Side + x) + 1] = char(p >> 8);
        }
    return out;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir temp;
    const QString root = argc > 1 ? QString::fromLocal8Bit(argv[1]) : temp.path();
    const QString wappen = root + QStringLiteral("/wappen/");
    QDir().mkpath(wappen);

    std::vector<QByteArray> pixels;
    QByteArray lst = "[wa]\r\ndatei=wa.res\r\nanzahl=" + QByteArray::number(Crests) + "\r\ntype=14\r\n";
    for (int n = 0; n < Crests; ++n) {
        pixels.push_back(crestPixels(n));
        const QByteArray name = "vereins_wappen_" + QByteArray::number(n);
        lst += "[" + name + "]\r\ndatei=" + name + ".gfp\r\n";
        writefilebytes(wappen + QString::fromLatin1(name) + QStringLiteral(".tga"), writetga(Side, Side, pixels.back(), 2));
    }
    writefilebytes(wappen + QStringLiteral("wa.lst"), lst);
    writefilebytes(wappen + QStringLiteral("default.gfp"), makegfp(GfpHeader(), 1, 1, QByteArray(2, '\0'), true));

    const double bare = zorbo::bench::medianms(5, [&] {
        std::vector<Bytef> out(compressBound(Side * Side * 2));
        for (const QByteArray &p : pixels) {
            uLongf n = uLongf(out.size());
            compress2(out.data(), &n, reinterpret_cast<const Bytef *>(p.constData()), uLong(p.size()), -1);
        }
    });
    const QString archive = root + QStringLiteral("/wa.res");
    CrestRunReport last;
    const double exportMs = zorbo::bench::medianms(5, [&] { last = exportwappen(archive, wappen); });
    if (!last.result || last.written != Crests || !last.findings.isEmpty()) {
        std::fprintf(stderr, "export failed: %s\n", qPrintable(last.result.message));
        return 1;
    }
    const double importMs = zorbo::bench::medianms(5, [&] { last = importwappen(archive, wappen); });
    if (!last.result || last.written != Crests) {
        std::fprintf(stderr, "import failed: %s\n", qPrintable(last.result.message));
        return 1;
    }
    std::printf("crests: %d of %d x %d pixels, archive %lld bytes\n", Crests, Side, Side,
                QFileInfo(archive).size());
    std::printf("compress2 alone: %8.1f ms (median of 5)\n", bare);
    std::printf("export:          %8.1f ms (median of 5) = %.2f x compress2\n", exportMs, exportMs / bare);
    std::printf("import:          %8.1f ms (median of 5)\n", importMs);
    return 0;
}
