#pragma once

#include "platform/folderlock.h"
#include "platform/operation.h"

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
// (ending in '/'), on its file system. A lock beside the folder keeps the
// recovery of one run (or of the editor's display) off the staging of another
// that is still at work; a killed run's lock dies with it.
QString crestStaging(const QString &wappenFolder);
QString crestCommitted(const QString &wappenFolder);

// Brings the folder back to one whole set of crests after a run that was cut
// off: a committed switch is finished, staging left unfinished is dropped.
// Whatever looks at the crests calls it first; it costs one look when all is
// well, and does nothing while another run holds the lock.
Result recovercrests(const QString &wappenFolder);

// One switch of an import, from staging to the crests.
class CrestSwitch {
public:
    explicit CrestSwitch(const QString &wappenFolder);
    // Drops staging that was not committed: the old crests stay.
    ~CrestSwitch();
    CrestSwitch(const CrestSwitch &) = delete;
    CrestSwitch &operator=(const CrestSwitch &) = delete;

    // Takes the lock, recovers, and gives an empty staging folder.
    Result begin();
    QString staging() const { return crestStaging(m_folder); }
    // Commits the staged files and moves them in. A failure before the commit
    // drops staging and leaves the old crests; one after it is finished by
    // the next run, as its message says.
    Result commit();
    void drop();

private:
    QString m_folder;
    FolderLock m_lock;
};

} // namespace zorbo
