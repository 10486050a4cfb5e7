#include "resources/gfp.h"

#include "resources/bytes.h"
#include "resources/filebytes.h"
#include "resources/pixels.h"
#include "resources/zlibdata.h"

#include <cstring>

namespace zorbo {

namespace {

constexpr char mark[4] = {'N', 'A', 'L', 'P'};

Result damaged(const QString &what, const QString &why)
{
    return Result::failure(QStringLiteral("%1 ist beschädigt: %2").arg(what, why));
}

} // namespace

int GfpHeader::field(int at) const
{
    return getlong(QByteArrayView(bytes.data(), GfpHeaderSize), at);
}

void GfpHeader::setField(int at, int value)
{
    putlong(bytes.data() + at, value);
}

void GfpHeader::setSize(int width, int height)
{
    setField(4, width);
    setField(8, height);
    setField(64, width);
    setField(68, height);
}

Result readgfpheader(QByteArrayView data, const QString &what, GfpHeader &header, qint64 &length)
{
    if (data.size() < GfpHeaderSize)
        return damaged(what, QStringLiteral("der Kopf ist unvollständig."));
    if (std::memcmp(data.data(), mark, 4) != 0 || std::memcmp(data.data() + 56, mark, 4) != 0)
        return damaged(what, QStringLiteral("die Kennung NALP fehlt."));
    std::memcpy(header.bytes.data(), data.data(), GfpHeaderSize);
    const int w = header.width();
    const int h = header.height();
    if (w < 1 || h < 1 || w > CrestMaxSide || h > CrestMaxSide)
        return damaged(what, QStringLiteral("unmögliche Bildgröße %1 × %2 (erlaubt 1 bis %3).")
                                 .arg(w)
                                 .arg(h)
                                 .arg(CrestMaxSide));
    const int bits = header.bits();
    if (bits != 8 && bits != 15 && bits != 16 && bits != 24 && bits != 32)
        return damaged(what, QStringLiteral("Farbtiefe %1 Bit wird nicht unterstützt.").arg(bits));
    const qint64 raw = qint64(w) * h * header.bytesPerPixel();
    const qint64 stored = header.stored();
    if (stored != 0 && stored < 8)
        return damaged(what, QStringLiteral("unmögliche gepackte Länge %1.").arg(stored));
    // Deflate shrinks by at most 1032 to 1: a shorter stream cannot fill the
    // picture, and no buffer is made for it.
    if (stored != 0 && (stored - 8) * 1032 + 64 < raw)
        return damaged(what,
                       QStringLiteral("die gepackten Bilddaten sind zu kurz für %1 × %2 Bildpunkte.").arg(w).arg(h));
    const qint64 payload = stored != 0 ? stored : raw;
    if (!inside(GfpHeaderSize, payload, data.size()))
        return damaged(what, QStringLiteral("die Bilddaten (%1 Bytes) reichen über das Ende hinaus.").arg(payload));
    length = GfpHeaderSize + payload;
    return Result::success();
}

Result readgfp(QByteArrayView data, const QString &what, GfpHeader &header, QByteArray &pixels)
{
    qint64 length = 0;
    if (Result r = readgfpheader(data, what, header, length); !r)
        return r;
    const qsizetype rawsize = qsizetype(header.width()) * header.height() * header.bytesPerPixel();
    if (header.stored() == 0) {
        pixels = data.sliced(GfpHeaderSize, rawsize).toByteArray();
        return Result::success();
    }
    pixels = data.sliced(GfpHeaderSize + 8, header.stored() - 8).toByteArray();
    if (const int rc = uncompressdata(pixels, rawsize); rc != 0) {
        pixels.clear();
        return damaged(what, QStringLiteral("die zlib-Daten lassen sich nicht entpacken (Fehler %1).").arg(rc));
    }
    return Result::success();
}

Result readgfp(const QString &path, GfpHeader &header, QByteArray &pixels)
{
    QByteArray bytes;
    if (Result r = readfilebytes(path, GfpMaxFileSize, bytes); !r)
        return r;
    return readgfp(bytes, QStringLiteral("Die Datei %1").arg(path), header, pixels);
}

QByteArray makegfp(GfpHeader header, int width, int height, const QByteArray &pixels, bool compress)
{
    std::memcpy(header.bytes.data(), mark, 4);
    std::memcpy(header.bytes.data() + 56, mark, 4);
    header.setSize(width, height);
    header.setBits(16);
    header.setRawsize(int(pixels.size()));
    QByteArray payload = pixels;
    QByteArray out;
    if (compress) {
        if (compressdata(payload, -1) != 0)
            return {};
        header.setMethod(GfpMethodZlib);
        header.setStored(int(payload.size()) + 8);
        out = QByteArray(header.bytes.data(), GfpHeaderSize);
        appendlong(out, int(pixels.size()));
        appendlong(out, int(payload.size()));
    } else {
        header.setMethod(0);
        header.setFlag(1);
        header.setStored(0);
        out = QByteArray(header.bytes.data(), GfpHeaderSize);
    }
    out.append(payload);
    return out;
}

} // namespace zorbo
