#include "platform/codepage.h"

#include <QStringDecoder>

#include <array>

namespace zorbo {

namespace {

// Row 0x80-0x9F of the code page; the five bytes without a character keep
// their control code point so that they survive a read and a write.
constexpr std::array<char16_t, 32> highRow = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr std::array<char16_t, 256> makeTable()
{
    std::array<char16_t, 256> t{};
    for (int i = 0; i < 256; ++i)
        t[i] = char16_t(i);
    for (int i = 0; i < 32; ++i)
        t[0x80 + i] = highRow[i];
    return t;
}

constexpr std::array<char16_t, 256> toUnicode = makeTable();

// Byte for a character, or -1. Characters below 0x100 are themselves except
// in the 0x80-0x9F row, where only the five placeholders stand for a byte.
int byteFor(char16_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return c;
    switch (c) {
    case 0x0081: return 0x81;
    case 0x008D: return 0x8D;
    case 0x008F: return 0x8F;
    case 0x0090: return 0x90;
    case 0x009D: return 0x9D;
    case 0x20AC: return 0x80;
    case 0x201A: return 0x82;
    case 0x0192: return 0x83;
    case 0x201E: return 0x84;
    case 0x2026: return 0x85;
    case 0x2020: return 0x86;
    case 0x2021: return 0x87;
    case 0x02C6: return 0x88;
    case 0x2030: return 0x89;
    case 0x0160: return 0x8A;
    case 0x2039: return 0x8B;
    case 0x0152: return 0x8C;
    case 0x017D: return 0x8E;
    case 0x2018: return 0x91;
    case 0x2019: return 0x92;
    case 0x201C: return 0x93;
    case 0x201D: return 0x94;
    case 0x2022: return 0x95;
    case 0x2013: return 0x96;
    case 0x2014: return 0x97;
    case 0x02DC: return 0x98;
    case 0x2122: return 0x99;
    case 0x0161: return 0x9A;
    case 0x203A: return 0x9B;
    case 0x0153: return 0x9C;
    case 0x017E: return 0x9E;
    case 0x0178: return 0x9F;
    default: return -1;
    }
}

} // namespace

QString fromCp1252(const QByteArray &bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    for (qsizetype i = 0; i < bytes.size(); ++i)
        out[i] = QChar(toUnicode[static_cast<unsigned char>(bytes[i])]);
    return text;
}

void appendCp1252AsUtf8(QByteArray &out, QByteArrayView cp1252)
{
    // Three bytes at most for each: the page holds no character beyond U+FFFF.
    const qsizetype at = out.size();
    out.resize(at + 3 * cp1252.size());
    char *p = out.data() + at;
    for (const char byte : cp1252) {
        const char16_t c = toUnicode[static_cast<unsigned char>(byte)];
        if (c < 0x80) {
            *p++ = char(c);
        } else if (c < 0x800) {
            *p++ = char(0xC0 | (c >> 6));
            *p++ = char(0x80 | (c & 0x3F));
        } else {
            *p++ = char(0xE0 | (c >> 12));
            *p++ = char(0x80 | ((c >> 6) & 0x3F));
            *p++ = char(0x80 | (c & 0x3F));
        }
    }
    out.resize(p - out.constData());
}

std::optional<QByteArray> toCp1252(const QString &text, int *badIndex)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char *out = bytes.data();
    const QChar *in = text.constData();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int b = byteFor(in[i].unicode());
        if (b < 0) {
            if (badIndex)
                *badIndex = int(i);
            return std::nullopt;
        }
        out[i] = char(b);
    }
    return bytes;
}

qsizetype plainUtf8ToCp1252(QByteArrayView utf8, char *out)
{
    const auto *p = reinterpret_cast<const unsigned char *>(utf8.data());
    const auto *end = p + utf8.size();
    char *const start = out;
    while (p < end) {
        const unsigned char c = *p;
        if (c >= 0x20 && c < 0x80) {
            *out++ = char(c);
            ++p;
            continue;
        }
        char32_t point = 0;
        if (c >= 0xC2 && c <= 0xDF && end - p >= 2 && (p[1] & 0xC0) == 0x80) {
            point = char32_t(c & 0x1F) << 6 | char32_t(p[1] & 0x3F);
            p += 2;
        } else if (c >= 0xE0 && c <= 0xEF && end - p >= 3 && (p[1] & 0xC0) == 0x80 && (p[2] & 0xC0) == 0x80) {
            point = char32_t(c & 0x0F) << 12 | char32_t(p[1] & 0x3F) << 6 | char32_t(p[2] & 0x3F);
            p += 3;
            if (point < 0x800 || (point >= 0xD800 && point <= 0xDFFF))
                return -1;
        } else {
            return -1; // a control character, four bytes, or no UTF-8
        }
        const int b = byteFor(char16_t(point));
        if (b < 0)
            return -1;
        *out++ = char(b);
    }
    return out - start;
}

bool fitsCp1252(const QString &text)
{
    for (QChar c : text) {
        if (byteFor(c.unicode()) < 0)
            return false;
    }
    return true;
}

bool looksutf8(QByteArrayView bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return true;
    // Text in code page 1252 with umlauts almost never forms valid UTF-8:
    // "ü" alone (FC) is no sequence, and valid pairs need a lead byte
    // followed by bytes from 80 to BF. Checked byte by byte, so that such a
    // file is told at its first umlaut: well-formed sequences only, without
    // overlong forms, surrogates or code points beyond 10FFFF.
    const auto *p = reinterpret_cast<const unsigned char *>(bytes.data());
    const auto *end = p + bytes.size();
    bool multiByte = false;
    while (p < end) {
        const unsigned char c = *p;
        if (c < 0x80) {
            ++p;
            continue;
        }
        multiByte = true;
        int length = 0;
        unsigned char low = 0x80, high = 0xBF; // the range of the second byte
        if (c >= 0xC2 && c <= 0xDF)
            length = 2;
        else if (c >= 0xE0 && c <= 0xEF) {
            length = 3;
            low = c == 0xE0 ? 0xA0 : 0x80;
            high = c == 0xED ? 0x9F : 0xBF;
        } else if (c >= 0xF0 && c <= 0xF4) {
            length = 4;
            low = c == 0xF0 ? 0x90 : 0x80;
            high = c == 0xF4 ? 0x8F : 0xBF;
        } else
            return false;
        if (end - p < length || p[1] < low || p[1] > high)
            return false;
        for (int i = 2; i < length; ++i) {
            if (p[i] < 0x80 || p[i] > 0xBF)
                return false;
        }
        p += length;
    }
    return multiByte;
}

} // namespace zorbo
