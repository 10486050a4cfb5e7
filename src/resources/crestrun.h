#pragma once

#include "platform/operation.h"

#include <QString>
#include <QStringList>

namespace zorbo {

// Outcome of a crest run: result fails only when the run could not go on at
// all; crests it had to leave out or fill in are told in findings.
struct CrestRunReport {
    Result result;
    int written = 0;      // crests written as .tga (import) or packed (export)
    QList<Finding> findings;
    // Import: crests written that wa.lst does not name, in archive order;
    // an export would leave them out. addtocrestlist adds them.
    QStringList missingFromList;
    int addedToList = 0; // import with addToList: how many it added
};

// Bounds the .tga files one import writes: a thousand crests of the largest
// allowed size fit.
inline constexpr qint64 CrestImportMaxBytes = 200LL * 1024 * 1024;

struct CrestImportOptions {
    bool addToList = false; // add the crests wa.lst lacks to it, with the crests
    qint64 maxOutput = CrestImportMaxBytes;
};

// Unpacks every picture (type 14) of the archive into <wappen><name>.tga,
// replacing files that exist. Entries with unusable names or damaged data are
// left out and reported, and their .tga stays as it was; nothing is written
// outside the wappen folder. Reports one step per archive entry; a stop
// (Cancelled) before the switch leaves every crest as it was.
// wappenFolder ends in '/'.
CrestRunReport importwappen(const QString &archivePath, const QString &wappenFolder, const Progress &progress = {},
                           const CrestImportOptions &options = {});

// Packs the crests that <wappen>wa.lst names, in its order, into an archive
// at archivePath. Each picture's header comes from <wappen>default.gfp; a
// crest whose .tga is missing or unreadable keeps that default picture and is
// reported. The pictures are packed from memory: the run writes no file but
// the archive, and that only once it is complete; a stop before leaves the
// old archive as it was. Reports a step per crest read and one per crest packed.
CrestRunReport exportwappen(const QString &archivePath, const QString &wappenFolder, const Progress &progress = {});

} // namespace zorbo
