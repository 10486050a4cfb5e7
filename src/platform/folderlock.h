#pragma once

#include <QString>

namespace zorbo {

// A lock between processes that dies with its holder. The kernel's lock on an
// open file is given back when the process ends, however it ends; so a run
// killed at any moment, even while it was taking the lock, never leaves a
// lock that keeps the next run waiting. The file itself may stay behind after
// a kill; the next holder takes it over and removes it when it lets go.
class FolderLock {
public:
    explicit FolderLock(QString path);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    // Takes the lock without waiting; false when another process holds it
    // or the file can't be made.
    bool tryLock();
    bool isLocked() const { return m_fd >= 0; }
    void unlock();

private:
    QString m_path;
    int m_fd = -1;
};

} // namespace zorbo
