#pragma once

#include "core/gamefiles.h"

namespace zorbo {

// The self-check of wa.res: the archive's crests are unpacked into a scratch
// crest folder (with the program's default.gfp and a wa.lst in the
// archive's order), packed again as the crest export packs them, and the two
// archives compared crest by crest.
GameFileCheck crestcheck();

// The comparison of two archives' bytes: each crest that differs, with the
// reason where it is known. file names the game's archive in the list.
QList<FileDifference> compareres(const QString &file, const QByteArray &game, const QByteArray &ours);

} // namespace zorbo
