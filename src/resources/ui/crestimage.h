#pragma once

#include <QImage>
#include <QString>

namespace zorbo {

// Decodes a crest file (a 24-bit .tga) through the crest module's reader;
// a null image when the file can't be read.
QImage crestimage(const QString &path);

} // namespace zorbo
