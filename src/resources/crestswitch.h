#pragma once

#include "platform/result.h"

#include <QString>

namespace zorbo {

// An import replaces many crests, and a kill or a full disk may stop it at any
// moment; yet the folder must hold either all old or all new crests. So the
// new crests are written into a staging folder first, where a failure or a
// kill harms nothing: staging is simply dropped. When all are written and on
// the disk, one rename of the staging folder commits the run; that rename
// either happens or not. Then the crests are moved one by one over the old
// ones. A kill during the moves leaves the committed folder behind, and the
// next run on the crests moves the rest first. Moves by rename never copy, so
// they need no room on the disk. Both folders lie inside the wappen folder
// (ending in '/'), on its file system.
QString crestStaging(const QString &wappenFolder);
QString crestCommitted(const QString &wappenFolder);

// Brings the folder back to one whole set of crests after a run that was
// cut off: a committed switch is finished, unfinished staging is dropped.
// Every run on the crests calls it first; it costs one look when all is well.
Result recovercrests(const QString &wappenFolder);

// Recovers, then gives an empty staging folder.
Result beginswitch(const QString &wappenFolder);
// Commits the staged files and moves them in. A failure before the commit
// drops staging and leaves the old crests; one after it is finished by the
// next run, as its message says.
Result commitswitch(const QString &wappenFolder);
// Drops the staged files: the old crests stay.
void dropswitch(const QString &wappenFolder);

} // namespace zorbo
