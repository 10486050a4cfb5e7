// Compares a fresh drawing with the committed pictures by what they show.
// The bytes can't be compared: QPainter rounds antialiased edges a little
// differently on processors with other vector units, and one changed pixel
// changes a GIF's palette. What the tool draws differently on purpose (a new
// colour, a moved line) shows as many pixels far off, which this catches.
#include "pictures.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <cstdio>
#include <cstdlib>

namespace zorbo {

namespace {

// How far a pixel may be off before it counts, and how many such pixels a
// picture may have: rounding moves edge pixels by a few steps, rarely more.
constexpr int farOff = 64;
constexpr double farShare = 0.005;
constexpr double meanLimit = 0.5;

bool comparepicture(const QString &drawn, const QString &committed)
{
    const QImage a = QImage(drawn).convertToFormat(QImage::Format_ARGB32);
    const QImage b = QImage(committed).convertToFormat(QImage::Format_ARGB32);
    if (a.isNull() || b.isNull() || a.size() != b.size()) {
        std::fprintf(stderr, "%s: unreadable or of another size\n", qPrintable(committed));
        return false;
    }
    qint64 sum = 0, far = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            // Fully transparent pixels may differ in their unseen colour.
            const bool seen = qAlpha(p) > 0 || qAlpha(q) > 0;
            const int d = !seen ? 0
                                : std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                            std::abs(qBlue(p) - qBlue(q)), std::abs(qAlpha(p) - qAlpha(q))});
            sum += d;
            far += d > farOff ? 1 : 0;
        }
    const double pixels = double(a.width()) * a.height();
    if (sum / pixels > meanLimit || far > farShare * pixels) {
        std::fprintf(stderr, "%s: differs from the drawing (mean %.2f, %lld pixels far off)\n", qPrintable(committed),
                     sum / pixels, far);
        return false;
    }
    return true;
}

} // namespace

bool comparefolders(const QString &drawn, const QString &committed)
{
    const QStringList pictures = {QStringLiteral("*.gif"), QStringLiteral("*.png")};
    const QStringList names = QDir(drawn).entryList(pictures, QDir::Files, QDir::Name);
    const QStringList theirs = QDir(committed).entryList(pictures, QDir::Files, QDir::Name);
    bool ok = true;
    // Drawings written as text (the SVG icon) are the same bytes everywhere.
    for (const QString &name : QDir(drawn).entryList({QStringLiteral("*.svg")}, QDir::Files)) {
        QFile a(drawn + QLatin1Char('/') + name), b(committed + QLatin1Char('/') + name);
        if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.readAll() != b.readAll()) {
            std::fprintf(stderr, "%s: differs from the drawing\n", qPrintable(b.fileName()));
            ok = false;
        }
    }
    if (names != theirs) {
        std::fprintf(stderr, "%s: other files than the tool draws\n", qPrintable(committed));
        ok = false;
    }
    for (const QString &name : names)
        ok = comparepicture(drawn + QLatin1Char('/') + name, committed + QLatin1Char('/') + name) && ok;
    return ok;
}

} // namespace zorbo
