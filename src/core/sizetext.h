#pragma once

#include <QString>

namespace zorbo {

// A file's or a history's size as German users read it: whole kilobytes
// below a megabyte ("820 kB", at least "1 kB" for anything), megabytes with
// one decimal above ("12,4 MB", "1.024,0 MB"); a kilobyte is 1024 bytes.
QString sizetext(qint64 bytes);

} // namespace zorbo
