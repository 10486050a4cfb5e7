#pragma once

#include "core/gamefiles.h"

namespace zorbo {

// The self-check of 1_tm.cfg and 1_sp.cfg: the file is read into a scratch
// world as an import reads it, written back as an export writes it (with
// the date of the file's own head) and compared line by line.
QList<GameFileCheck> configchecks();

// The comparison itself, for two files' bytes: every line that differs,
// with the reason where it is known. file names the game's file in the list.
QList<FileDifference> comparecfg(const QString &file, const QByteArray &game, const QByteArray &ours,
                                 bool gameInUtf8 = false);

} // namespace zorbo
