#pragma once

#include "platform/operation.h"

#include <QList>
#include <QString>

namespace zorbo {

// One line of an archive's table of contents.
struct ResListing {
    int number = 0;
    qint32 type = 0;
    qint32 offset = 0;
    QString name;       // printable form, see printablename
    qint64 size = -1;   // bytes of the resource; -1 when it is damaged
    int width = 0;      // picture size, for .gfp resources
    int height = 0;
    QString problem;    // why the entry is unusable, in German
};

// Lists every entry of an archive; a damaged header fails, a damaged entry is
// listed with its problem.
Result listresf(const QString &path, QList<ResListing> &rows);

} // namespace zorbo
