#include "resources/convert.h"

#include "resources/filebytes.h"
#include "resources/gfp.h"
#include "resources/tga.h"

namespace zorbo {

Result gfp2tga(const QString &gfpPath, const QString &tgaPath)
{
    GfpHeader header;
    QByteArray pixels;
    if (Result r = readgfp(gfpPath, header, pixels); !r)
        return r;
    return writefilebytes(tgaPath, writetga(header.width(), header.height(), pixels, header.bytesPerPixel()));
}

Result tga2gfp(const QString &tgaPath, const QString &gfpPath, bool compress)
{
    QByteArray old;
    if (Result r = readfilebytes(gfpPath, GfpMaxFileSize, old); !r)
        return r;
    GfpHeader header;
    qint64 length = 0;
    if (Result r = readgfpheader(old, QStringLiteral("Die Datei %1").arg(gfpPath), header, length); !r)
        return r;
    TgaImage image;
    if (Result r = readtga(tgaPath, image); !r)
        return r;
    const QByteArray gfp = makegfp(header, image.width, image.height, image.pixels, compress);
    if (gfp.isEmpty())
        return Result::failure(QStringLiteral("Das Bild %1 lässt sich nicht packen.").arg(tgaPath));
    return writefilebytes(gfpPath, gfp);
}

} // namespace zorbo
