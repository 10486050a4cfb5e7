#include "resources/ui/crestimage.h"

#include "resources/pixels.h"
#include "resources/tga.h"

namespace zorbo {

QImage crestimage(const QString &path)
{
    TgaImage tga;
    if (!readtga(path, tga))
        return {};
    QImage image(tga.width, tga.height, QImage::Format_RGB32);
    const auto *in = reinterpret_cast<const unsigned char *>(tga.pixels.constData());
    for (int y = 0; y < tga.height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < tga.width; ++x, in += 2) {
            const int p = in[0] | in[1] << 8;
            line[x] = qRgb(expand5(red565(p)), expand6(green565(p)), expand5(blue565(p)));
        }
    }
    return image;
}

} // namespace zorbo
