#pragma once

#include "platform/operation.h"

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
    QList<Finding> findings;       // what was read but does not add up
};

// Reads the list; a missing file, no sections, or an "anzahl" or "type" that is
// not a whole number stops with a message. Fewer sections than "anzahl" are
// taken as they are and noted in findings.
Result readcrestlist(const QString &file, CrestList &list);

// Why a crest of this name could not go through wa.lst and the archive and
// come back under the same name: the list trims blanks and ends a section's
// name at "]", the archive ends a name at a blank. Empty when it can.
QString crestnamereason(const QString &name);

// Of the names given, those that the list at file does not name (compared as
// the profile functions compare, without regard to case), in the order given
// and each once. A missing list names nothing.
QStringList missingfromcrestlist(const QString &file, const QStringList &names);

// Writes to target the list at source with the names it lacks added as
// sections at its end, in the order given; "anzahl" then counts all crest
// sections. A missing source gives a new list for an archive named
// archiveName. target may be source. Returns how many names were added.
Result completecrestlist(const QString &source, const QString &target, const QString &archiveName,
                         const QStringList &names, int *added = nullptr);

// completecrestlist on <wappen>wa.lst in place, for a window that asks after
// an import whether to add the crests it reported in missingFromList.
Result addtocrestlist(const QString &wappenFolder, const QStringList &names, int *added = nullptr);

} // namespace zorbo
