#pragma once

#include <QByteArray>
#include <QImage>

namespace zorbo {

// Qt reads GIF but cannot write it. Pixels with alpha below 128 become the
// transparent index; more than 255 colours are folded onto the most frequent
// ones and a coarse colour cube, so the same image always gives the same bytes.
QByteArray encodegif(const QImage &image);
bool writegif(const QImage &image, const QString &path);

} // namespace zorbo
