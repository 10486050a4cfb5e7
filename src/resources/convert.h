#pragma once

#include "platform/operation.h"

#include <QString>

namespace zorbo {

// Writes the .gfp's picture as the editor's 24-bit TGA, replacing one that
// exists only once the new file is complete.
Result gfp2tga(const QString &gfpPath, const QString &tgaPath);

// Replaces the .gfp at gfpPath by the TGA's picture. The header blocks come
// from the .gfp that stood there before (a copy of default.gfp in an export);
// width, height, bits, sizes and method are set anew.
Result tga2gfp(const QString &tgaPath, const QString &gfpPath, bool compress);

} // namespace zorbo
