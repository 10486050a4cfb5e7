#pragma once

#include "platform/operation.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace zorbo {

// One resource of an archive to be packed (an element of wappenliste past
// the first): its name as the archive keeps it and its finished .gfp. The
// pictures stay in memory: a thousand crests pack to a few megabytes, and
// temporary files would cost more than the compression.
struct WappenItem {
    QByteArray name; // code page 1252, at most 255 bytes
    QByteArray data; // the .gfp
    qint64 offset = 0;
};

// Offsets of the resources: the first at 12, each next one behind the one
// before, plus 4 for the length Long of type 16. Returns dirpos, or -1 when
// the archive would outgrow the Longs of its directory.
qint64 resoffsets(QList<WappenItem> &items, qint32 type);

// Writes the archive: header, resources, directory, names with blanks turned
// into zero bytes. The target is replaced only when the whole archive is
// written. Reports one step per resource, before the target is touched;
// throws Cancelled when progress asks to stop.
Result packresf(const QString &target, qint32 type, QList<WappenItem> items, const Progress &progress = {});

} // namespace zorbo
