#pragma once

#include <QString>

namespace zorbo {

// The program folder: the executable's folder when it is writable (a portable
// install), otherwise the per-user data folder. Never ends in a separator.
QString programfolder();

} // namespace zorbo
