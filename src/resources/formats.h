#pragma once

#include "core/fileformat.h"

namespace zorbo {

// The game's crest archive, "wappen" (wa.res): read into the wappen folder,
// written from it in the order of wa.lst. Its runs need no world.
const QList<FileFormat> &resourceformats();
// One of them by its key; null for a key that is not one.
const FileFormat *resourceformat(const QString &key);

} // namespace zorbo
