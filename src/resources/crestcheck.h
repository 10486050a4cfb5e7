#pragma once

#include "core/gamefiles.h"

namespace zorbo {

// The self-check of wa.res: each crest of the archive goes the way of the
// crest import (the .tga it writes) and of the export (that .tga read and
// packed with the program's default.gfp), in the archive's order and in
// memory, and the two archives are compared crest by crest.
GameFileCheck crestcheck();

// The comparison of two archives' bytes: each crest that differs, with the
// reason where it is known. file names the game's archive in the list.
QList<FileDifference> compareres(const QString &file, const QByteArray &game, const QByteArray &ours);

} // namespace zorbo
