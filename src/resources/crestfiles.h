#pragma once

#include "platform/operation.h"

#include <QString>

namespace zorbo {

inline constexpr int CrestCount = 1000;

// The crest file of crest number n in the wappen folder (ending in '/'):
// "vereins_wappen_5.tga", no leading zeros.
QString crestfile(const QString &wappenFolder, int n);

// Makes sure crest n has a file: a missing one becomes a copy of
// default.tga, and the copy stays. Returns the path; fails when neither the
// crest nor default.tga can be had.
Result ensurecrest(const QString &wappenFolder, int n, QString &path);
// The same for crests 0 to 999; stops at the first failure. Shows progress
// but takes no stop from it.
Result ensureallcrests(const QString &wappenFolder, const Progress &progress = {});

// Copies a kit set's ma.res over the game's. A missing target means that no
// game is installed there: "Kein Zorbo installiert", nothing copied.
Result copymares(const QString &kitFolder, const QString &zorboresFolder);

} // namespace zorbo
