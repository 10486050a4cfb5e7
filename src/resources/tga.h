#pragma once

#include "platform/operation.h"

#include <QByteArray>
#include <QString>

namespace zorbo {

inline constexpr int TgaHeaderSize = 18;
// A picture of the largest crest size at 4 bytes a pixel, with run-length
// packets, an id field and a colour table.
inline constexpr qint64 TgaMaxFileSize = 2 * 1024 * 1024;

// A picture in the game's 16-bit form: rows from the top, 2 bytes a pixel,
// low byte first.
struct TgaImage {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};

// Reads a true-colour TGA as drawing tools write it: image type 2 or 10
// (run-length), 24 or 32 bits (alpha dropped), rows from the bottom or, with
// bit 5 of the descriptor, from the top. Sides are limited to CrestMaxSide.
// what names the picture in messages.
Result readtga(QByteArrayView data, const QString &what, TgaImage &image);
Result readtga(const QString &path, TgaImage &image);

// The editor's own TGA: type 2, 24 bits, rows from the bottom, every header
// byte zero but type, size and depth. pixels are rows from the top with
// bytesPerPixel 2 to 4 (the 16-bit form in the last two bytes of each pixel,
// widened by expand5/expand6) or 1 (grey).
QByteArray writetga(int width, int height, QByteArrayView pixels, int bytesPerPixel);

} // namespace zorbo
