#include "platform/folderlock.h"

#include <QFile>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zorbo {

FolderLock::FolderLock(QString path) : m_path(std::move(path)) {}

FolderLock::~FolderLock()
{
    unlock();
}

bool FolderLock::tryLock()
{
    if (m_fd >= 0)
        return true;
    const QByteArray name = QFile::encodeName(m_path);
    // The holder before us may remove the file between our open and our lock;
    // then we hold a file no one else will see, and open again.
    for (int attempt = 0; attempt < 8; ++attempt) {
        const int fd = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
        if (fd < 0)
            return false;
        if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
            ::close(fd);
            return false;
        }
        struct stat held {};
        struct stat named {};
        if (::fstat(fd, &held) == 0 && ::stat(name.constData(), &named) == 0 && held.st_dev == named.st_dev
            && held.st_ino == named.st_ino) {
            m_fd = fd;
            return true;
        }
        ::close(fd);
    }
    return false;
}

void FolderLock::unlock()
{
    if (m_fd < 0)
        return;
    // Removed while still held, so that no one takes over a file on its way out.
    ::unlink(QFile::encodeName(m_path).constData());
    ::close(m_fd);
    m_fd = -1;
}

} // namespace zorbo
