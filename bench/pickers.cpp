// First opening of the two pickers: the crest picker on a folder of 1,000
// crests (64 x 64, 24 bits) and the kit picker on 80 drawings, each until
// the dialog has painted its visible cells. Every run makes a new dialog on
// a warm file cache, as the second program start would see it.
// Usage: QT_QPA_PLATFORM=offscreen bench-pickers [runs]
#include "editor/ui/kitpicker.h"
#include "resources/crestfiles.h"
#include "resources/tga.h"
#include "resources/ui/crestgridmodel.h"
#include "resources/ui/crestpicker.h"

#include "timing.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace zorbo;

namespace {

QByteArray crest(int n)
{
    QByteArray pixels;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const int p = ((x + n) % 32) * 2048 | ((y * 2 + n) % 64) * 32 | (n % 32);
            pixels.append(char(p & 0xFF)).append(char(p >> 8));
        }
    return writetga(64, 64, pixels, 2);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 9;
    QTemporaryDir dir;
    const QString wappen = dir.filePath(QStringLiteral("wappen/"));
    const QString kits = dir.filePath(QStringLiteral("trikot/"));
    QDir().mkpath(wappen);
    QDir().mkpath(kits);
    for (int n = 0; n < CrestCount; ++n) {
        QFile f(crestfile(wappen, n));
        if (!f.open(QIODevice::WriteOnly) || f.write(crest(n)) < 0)
            return 1;
    }
    QFile::copy(crestfile(wappen, 0), wappen + QStringLiteral("default.tga"));
    for (int art = 0; art < 80; ++art) {
        QImage image(61, 71, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(art * 4, 200, 220));
        image.save(kits + QStringLiteral("trikot_%1.gif").arg(art, 2, 10, QLatin1Char('0')), "PNG");
    }

    int decoded = 0;
    const double crestMs = zorbo::bench::medianms(runs, [&] {
        ensureallcrests(wappen);
        CrestPicker picker(wappen);
        picker.show();
        picker.grab();
        decoded = picker.model()->decoded();
    });
    // The same with only default.tga present, so that 1,000 copies are made first.
    const QString empty = dir.filePath(QStringLiteral("leer/"));
    const double copyMs = zorbo::bench::medianms(runs, [&] {
        QDir(empty).removeRecursively();
        QDir().mkpath(empty);
        QFile::copy(wappen + QStringLiteral("default.tga"), empty + QStringLiteral("default.tga"));
        ensureallcrests(empty);
        CrestPicker picker(empty);
        picker.show();
        picker.grab();
    });
    const double kitMs = zorbo::bench::medianms(runs, [&] {
        KitPicker picker(kits, {});
        picker.prepare(nullptr, 0);
        picker.show();
        picker.grab();
    });
    std::printf("crest picker, first opening on 1,000 crests: %.1f ms (median of %d, %d crests decoded)\n", crestMs,
                runs, decoded);
    std::printf("crest picker, first opening with 1,000 copies of default.tga to make: %.1f ms (median of %d)\n",
                copyMs, runs);
    std::printf("kit picker, first opening on 80 drawings:   %.1f ms (median of %d)\n", kitMs, runs);
    return 0;
}
