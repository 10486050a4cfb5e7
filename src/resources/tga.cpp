#include "resources/tga.h"

#include "resources/bytes.h"
#include "resources/filebytes.h"
#include "resources/pixels.h"

namespace zorbo {

namespace {

Result refused(const QString &what, const QString &why)
{
    return Result::failure(QStringLiteral("%1 ist kein lesbares TGA-Bild: %2").arg(what, why));
}

// Puts the pixels of the file's order into rows from the top, whatever corner
// the file starts in.
class PixelSink {
public:
    PixelSink(TgaImage &image, bool topFirst, bool rightFirst)
        : m_out(reinterpret_cast<unsigned char *>(image.pixels.data())), m_width(image.width),
          m_height(image.height), m_topFirst(topFirst), m_rightFirst(rightFirst)
    {
    }
    bool full() const { return m_row == m_height; }
    void put(const unsigned char *bgr)
    {
        const int p = pack565(to5bit(bgr[2]), to6bit(bgr[1]), to5bit(bgr[0]));
        const int y = m_topFirst ? m_row : m_height - 1 - m_row;
        const int x = m_rightFirst ? m_width - 1 - m_col : m_col;
        unsigned char *at = m_out + (qsizetype(y) * m_width + x) * 2;
        at[0] = (unsigned char)(p & 0xFF);
        at[1] = (unsigned char)(p >> 8);
        if (++m_col == m_width) {
            m_col = 0;
            ++m_row;
        }
    }

private:
    unsigned char *m_out;
    int m_width, m_height;
    bool m_topFirst, m_rightFirst;
    int m_row = 0, m_col = 0;
};

} // namespace

Result readtga(QByteArrayView data, const QString &what, TgaImage &image)
{
    if (data.size() < TgaHeaderSize)
        return refused(what, QStringLiteral("der Kopf ist unvollständig."));
    const auto *h = reinterpret_cast<const unsigned char *>(data.data());
    const int idLength = h[0];
    const int mapType = h[1];
    const int type = h[2];
    const int width = getword(data, 12);
    const int height = getword(data, 14);
    const int depth = h[16];
    if (type != 2 && type != 10)
        return refused(what, QStringLiteral("Bildtyp %1 (lesbar sind 2 und 10, Echtfarben).").arg(type));
    if (depth != 24 && depth != 32)
        return refused(what, QStringLiteral("Farbtiefe %1 Bit (lesbar sind 24 und 32).").arg(depth));
    if (mapType > 1)
        return refused(what, QStringLiteral("unbekannte Farbtabelle %1.").arg(mapType));
    if (width < 1 || height < 1 || width > CrestMaxSide || height > CrestMaxSide)
        return refused(what, QStringLiteral("unmögliche Bildgröße %1 × %2 (erlaubt 1 bis %3).")
                                 .arg(width)
                                 .arg(height)
                                 .arg(CrestMaxSide));
    // A true-colour picture may still carry a colour table; it is skipped.
    const qint64 mapBytes = mapType == 1 ? qint64(getword(data, 5)) * ((h[7] + 7) / 8) : 0;
    qint64 at = TgaHeaderSize + idLength + mapBytes;
    const int bpp = depth / 8;
    const qint64 count = qint64(width) * height;
    if (type == 2 && !inside(at, count * bpp, data.size()))
        return refused(what, QStringLiteral("die Bilddaten sind unvollständig."));
    // A packet covers at most 128 pixels: a file too short for that cannot
    // hold the picture, and no buffer is made for it.
    if (type == 10 && !inside(at, (count + 127) / 128 * (1 + bpp), data.size()))
        return refused(what, QStringLiteral("die gepackten Bilddaten sind zu kurz."));

    TgaImage out{width, height, QByteArray(qsizetype(count) * 2, Qt::Uninitialized)};
    PixelSink sink(out, h[17] & 0x20, h[17] & 0x10);
    const auto *p = reinterpret_cast<const unsigned char *>(data.data());
    const qint64 size = data.size();
    if (type == 2) {
        for (qint64 i = 0; i < count; ++i, at += bpp)
            sink.put(p + at);
    } else {
        while (!sink.full()) {
            if (at >= size)
                return refused(what, QStringLiteral("die gepackten Bilddaten brechen ab."));
            const int packet = p[at++];
            const int n = (packet & 0x7F) + 1;
            const bool repeat = packet & 0x80;
            if (!inside(at, qint64(repeat ? 1 : n) * bpp, size))
                return refused(what, QStringLiteral("die gepackten Bilddaten brechen ab."));
            // A packet that runs past the last pixel is cut there.
            for (int k = 0; k < n && !sink.full(); ++k)
                sink.put(p + at + (repeat ? 0 : qint64(k) * bpp));
            at += qint64(repeat ? 1 : n) * bpp;
        }
    }
    image = std::move(out);
    return Result::success();
}

Result readtga(const QString &path, TgaImage &image)
{
    QByteArray bytes;
    if (Result r = readfilebytes(path, TgaMaxFileSize, bytes); !r)
        return r;
    return readtga(bytes, QStringLiteral("Die Datei %1").arg(path), image);
}

QByteArray writetga(int width, int height, QByteArrayView pixels, int bytesPerPixel)
{
    QByteArray out(TgaHeaderSize + qsizetype(width) * height * 3, '\0');
    auto *o = reinterpret_cast<unsigned char *>(out.data());
    o[2] = 2;
    o[12] = (unsigned char)(width & 0xFF);
    o[13] = (unsigned char)(width >> 8);
    o[14] = (unsigned char)(height & 0xFF);
    o[15] = (unsigned char)(height >> 8);
    o[16] = 24;
    o += TgaHeaderSize;
    const auto *in = reinterpret_cast<const unsigned char *>(pixels.data());
    for (int y = height - 1; y >= 0; --y) {
        const unsigned char *row = in + qsizetype(y) * width * bytesPerPixel;
        for (int x = 0; x < width; ++x, o += 3) {
            if (bytesPerPixel == 1) {
                o[0] = o[1] = o[2] = row[x];
            } else {
                const unsigned char *px = row + qsizetype(x) * bytesPerPixel + bytesPerPixel - 2;
                const int v = px[0] | px[1] << 8;
                o[0] = (unsigned char)expand5(blue565(v));
                o[1] = (unsigned char)expand6(green565(v));
                o[2] = (unsigned char)expand5(red565(v));
            }
        }
    }
    return out;
}

} // namespace zorbo
