#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

namespace zorbo {

// Little-endian access to the game's binary formats. Callers check the bounds
// before they read; these helpers only assemble and split the numbers.
inline qint32 getlong(QByteArrayView data, qsizetype at)
{
    const auto *p = reinterpret_cast<const unsigned char *>(data.data()) + at;
    return qint32(quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24);
}

inline int getword(QByteArrayView data, qsizetype at)
{
    const auto *p = reinterpret_cast<const unsigned char *>(data.data()) + at;
    return int(p[0]) | int(p[1]) << 8;
}

inline void putlong(char *p, qint32 value)
{
    const auto v = quint32(value);
    p[0] = char(v & 0xFF);
    p[1] = char(v >> 8 & 0xFF);
    p[2] = char(v >> 16 & 0xFF);
    p[3] = char(v >> 24 & 0xFF);
}

inline void appendlong(QByteArray &out, qint32 value)
{
    char b[4];
    putlong(b, value);
    out.append(b, 4);
}

// True when [offset, offset + length) lies inside a buffer of size bytes;
// computed in 64 bits so that no sum of file numbers can wrap.
inline bool inside(qint64 offset, qint64 length, qint64 size)
{
    return offset >= 0 && length >= 0 && offset <= size && length <= size - offset;
}

} // namespace zorbo
