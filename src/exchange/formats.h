#pragma once

#include "core/fileformat.h"

namespace zorbo {

// The game's configuration files and the editor's team files:
// "vereine" (1_tm.cfg), "spieler" (1_sp.cfg), "teamdatei" (.tea).
const QList<FileFormat> &exchangeformats();
// One of them by its key; null for a key that is not one.
const FileFormat *exchangeformat(const QString &key);

} // namespace zorbo
