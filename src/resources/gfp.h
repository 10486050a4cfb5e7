#pragma once

#include "platform/operation.h"

#include <QByteArray>
#include <QString>
#include <array>

namespace zorbo {

// The .gfp picture: "NALP", a 52-byte block, "NALP", a 72-byte block, then the
// payload. The blocks are kept as raw bytes because most of them are taken
// over unchanged from the template default.gfp; the accessors name the few
// fields the editor reads or sets.
inline constexpr int GfpHeaderSize = 132;
inline constexpr int GfpMethodZlib = 11;
// A .gfp on disk: a picture of the largest crest size at 4 bytes a pixel,
// with room for a stream that did not compress.
inline constexpr qint64 GfpMaxFileSize = 2 * 1024 * 1024;

struct GfpHeader {
    std::array<char, GfpHeaderSize> bytes{};

    int width() const { return field(64); }
    int height() const { return field(68); }
    int bits() const { return field(72); }
    int stored() const { return field(96); }
    int rawsize() const { return field(100); }
    int method() const { return (unsigned char)bytes[104]; }
    int flag() const { return (unsigned char)bytes[105]; }
    // (bits + 1) div 8: 15 and 16 bits both take 2 bytes, 8 bits one, 24
    // three and 32 four. Of more than one byte, the last two hold the colour.
    int bytesPerPixel() const { return (bits() + 1) / 8; }

    // Sets width and height in both blocks.
    void setSize(int width, int height);
    void setBits(int bits) { setField(72, bits); }
    void setStored(int stored) { setField(96, stored); }
    void setRawsize(int rawsize) { setField(100, rawsize); }
    void setMethod(int method) { bytes[104] = char(method); }
    void setFlag(int flag) { bytes[105] = char(flag); }

private:
    int field(int at) const;
    void setField(int at, int value);
};

// Checks the marks and the numbers of the .gfp that starts at data (which may
// run on past it, as in an archive) and gives its total length: header plus
// stored bytes when stored is not 0, else header plus width x height x bytes
// a pixel. what names the picture in messages.
Result readgfpheader(QByteArrayView data, const QString &what, GfpHeader &header, qint64 &length);

// Reads a whole .gfp: header and pixel data (rows from the top, 1 or 2 bytes
// to 4 bytes a pixel as bits says; sides of at most CrestMaxSide). A zlib stream that does not inflate to the picture's
// size is an error, never a black picture.
Result readgfp(QByteArrayView data, const QString &what, GfpHeader &header, QByteArray &pixels);
Result readgfp(const QString &path, GfpHeader &header, QByteArray &pixels);

// A .gfp with template's blocks, the given size, 16 bits and the pixels:
// zlib-compressed at zlib's default level (method 11) or stored (method 0,
// flag 1). An empty result means the compression failed.
QByteArray makegfp(GfpHeader header, int width, int height, const QByteArray &pixels, bool compress);

} // namespace zorbo
