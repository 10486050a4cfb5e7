#pragma once

#include "platform/result.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace zorbo {

// wa.lst, the profile file that says which crests an export packs and in
// which order: the first section describes the archive, each further section
// is one crest, named as in the archive. The crest sections' "datei" keys
// (names of temporary files) are not read: the export names its temporary
// files after the crests, which are checked names already, and so needs one
// pass over the file instead of one per crest.
struct CrestListEntry {
    QString name;
};

struct CrestList {
    QString datei;  // the archive's file name; the export's target comes from the user
    qint32 type = 0;
    QList<CrestListEntry> entries; // the first "anzahl" crest sections
    QStringList problems;          // what was read but does not add up, in German
};

// Reads the list; a missing file, no sections, or an "anzahl" or "type" that is
// not a whole number stops with a message. Fewer sections than "anzahl" are
// taken as they are and noted in problems.
Result readcrestlist(const QString &file, CrestList &list);

// Makes the list name every crest given: names it lacks are added as
// sections at its end, in the order given, and "anzahl" counts all crest
// sections afterwards. A missing list is created for an archive of the
// given file name. So an archive imported into the folder goes out whole
// at the next export. Returns how many crests were added.
Result completecrestlist(const QString &file, const QString &archiveName, const QStringList &names, int *added = nullptr);

} // namespace zorbo
