#pragma once

#include "platform/operation.h"

#include <QByteArrayView>
#include <QString>

namespace zorbo {

// Why the program must not write a file at path: a device, a named pipe, a
// socket or a folder stands there (links followed). Empty for a plain file
// or nothing at all. Writing "over" such a thing would put a plain file in
// its place, so a mistyped export target could replace /dev/null.
QString writetargetproblem(const QString &path);

enum class Flush {
    Disk, // the new contents reach the disk before they replace the old
    None, // left to the system: for files that a later, flushed step commits
};

// The one way the program replaces a file: the target is checked, the bytes
// are written beside it and renamed over it, so a failed or killed write
// leaves the old file whole and no half-written one. German message on failure.
Result replacefile(const QString &path, QByteArrayView bytes, Flush flush = Flush::Disk);

// Waits until what was written to the folder's file system is on the disk,
// so that a step committing many files written with Flush::None never names
// files the disk does not hold yet. False when it could not be done.
bool syncfilesystem(const QString &folder);

// A folder whose files go when a check ends (the self-check's scratch
// world): while the object lives, files replaced below it and file systems
// synced for it don't wait for the disk.
class ScratchFolder {
public:
    explicit ScratchFolder(const QString &folder);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;

private:
    QString m_folder;
};

} // namespace zorbo
