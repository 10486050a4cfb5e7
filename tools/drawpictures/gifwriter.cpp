#include "gifwriter.h"

#include <QFile>
#include <QHash>
#include <algorithm>
#include <vector>

namespace zorbo {

namespace {

struct Palette {
    std::vector<QRgb> colours;
    bool transparent = false; // index colours.size() is the transparent one
};

int distance(QRgb a, QRgb b)
{
    const int dr = qRed(a) - qRed(b), dg = qGreen(a) - qGreen(b), db = qBlue(a) - qBlue(b);
    return dr * dr + dg * dg + db * db;
}

// Packs variable-width codes least significant bit first, as GIF wants.
class BitPacker {
public:
    void put(int code, int width)
    {
        m_acc |= quint32(code) << m_bits;
        m_bits += width;
        while (m_bits >= 8) {
            m_bytes.append(char(m_acc & 0xff));
            m_acc >>= 8;
            m_bits -= 8;
        }
    }
    QByteArray finish()
    {
        if (m_bits > 0)
            m_bytes.append(char(m_acc & 0xff));
        return m_bytes;
    }

private:
    QByteArray m_bytes;
    quint32 m_acc = 0;
    int m_bits = 0;
};

QByteArray lzw(const std::vector<uchar> &indices, int minCodeSize)
{
    const int clear = 1 << minCodeSize, end = clear + 1;
    BitPacker out;
    QHash<quint32, int> table; // (prefix code << 8 | byte) -> code
    int next = end + 1, width = minCodeSize + 1;
    out.put(clear, width);
    int prefix = -1;
    for (uchar c : indices) {
        if (prefix < 0) {
            prefix = c;
            continue;
        }
        const quint32 key = (quint32(prefix) << 8) | c;
        const auto it = table.constFind(key);
        if (it != table.constEnd()) {
            prefix = *it;
            continue;
        }
        out.put(prefix, width);
        if (next < 4096) {
            table.insert(key, next++);
            if (next > (1 << width) && width < 12)
                ++width;
        } else {
            out.put(clear, width);
            table.clear();
            next = end + 1;
            width = minCodeSize + 1;
        }
        prefix = c;
    }
    if (prefix >= 0)
        out.put(prefix, width);
    out.put(end, width);
    return out.finish();
}

void putword(QByteArray &b, int v)
{
    b.append(char(v & 0xff));
    b.append(char((v >> 8) & 0xff));
}

} // namespace

QByteArray encodegif(const QImage &source)
{
    const QImage image = source.convertToFormat(QImage::Format_ARGB32);
    const int w = image.width(), h = image.height();

    QHash<QRgb, int> counts;
    bool anyTransparent = false;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const QRgb p = image.pixel(x, y);
            if (qAlpha(p) < 128)
                anyTransparent = true;
            else
                ++counts[p | 0xff000000u];
        }
    std::vector<std::pair<QRgb, int>> byCount;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        byCount.emplace_back(it.key(), it.value());
    std::sort(byCount.begin(), byCount.end(), [](const auto &a, const auto &b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    Palette pal;
    pal.transparent = anyTransparent;
    const size_t room = anyTransparent ? 255 : 256;
    if (byCount.size() <= room) {
        for (const auto &c : byCount)
            pal.colours.push_back(c.first);
    } else {
        // The most frequent colours stay exact, so flat fills keep their colour;
        // a 5 x 5 x 5 cube catches the rest within half a step.
        for (size_t i = 0; i < room - 125; ++i)
            pal.colours.push_back(byCount[i].first);
        for (int r = 0; r < 5; ++r)
            for (int g = 0; g < 5; ++g)
                for (int b = 0; b < 5; ++b)
                    pal.colours.push_back(qRgb(r * 255 / 4, g * 255 / 4, b * 255 / 4));
        std::sort(pal.colours.begin(), pal.colours.end());
        pal.colours.erase(std::unique(pal.colours.begin(), pal.colours.end()), pal.colours.end());
    }
    if (pal.colours.empty())
        pal.colours.push_back(0xff000000u);
    std::sort(pal.colours.begin(), pal.colours.end());

    QHash<QRgb, int> indexOf;
    for (size_t i = 0; i < pal.colours.size(); ++i)
        indexOf.insert(pal.colours[i], int(i));
    const int transparentIndex = int(pal.colours.size());
    const int used = transparentIndex + (anyTransparent ? 1 : 0);
    int bits = 1;
    while ((1 << bits) < used)
        ++bits;

    std::vector<uchar> indices;
    indices.reserve(size_t(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const QRgb p = image.pixel(x, y);
            if (qAlpha(p) < 128) {
                indices.push_back(uchar(transparentIndex));
                continue;
            }
            const QRgb opaque = p | 0xff000000u;
            auto it = indexOf.constFind(opaque);
            if (it == indexOf.constEnd()) {
                int best = 0;
                for (size_t i = 1; i < pal.colours.size(); ++i)
                    if (distance(pal.colours[i], opaque) < distance(pal.colours[best], opaque))
                        best = int(i);
                it = indexOf.insert(opaque, best);
            }
            indices.push_back(uchar(*it));
        }

    QByteArray gif("GIF89a");
    putword(gif, w);
    putword(gif, h);
    gif.append(char(0x80 | ((bits - 1) << 4) | (bits - 1)));
    gif.append(char(0));
    gif.append(char(0));
    for (int i = 0; i < (1 << bits); ++i) {
        const QRgb c = i < int(pal.colours.size()) ? pal.colours[i] : 0;
        gif.append(char(qRed(c)));
        gif.append(char(qGreen(c)));
        gif.append(char(qBlue(c)));
    }
    if (anyTransparent) {
        gif.append("\x21\xf9\x04\x01", 4);
        putword(gif, 0);
        gif.append(char(transparentIndex));
        gif.append(char(0));
    }
    gif.append(char(0x2c));
    putword(gif, 0);
    putword(gif, 0);
    putword(gif, w);
    putword(gif, h);
    gif.append(char(0));
    const int minCodeSize = std::max(2, bits);
    gif.append(char(minCodeSize));
    const QByteArray data = lzw(indices, minCodeSize);
    for (qsizetype i = 0; i < data.size(); i += 255) {
        const qsizetype n = std::min<qsizetype>(255, data.size() - i);
        gif.append(char(n));
        gif.append(data.constData() + i, n);
    }
    gif.append(char(0));
    gif.append(char(0x3b));
    return gif;
}

bool writegif(const QImage &image, const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    return f.write(encodegif(image)) >= 0;
}

} // namespace zorbo
