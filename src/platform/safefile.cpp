#include "platform/safefile.h"

#include "platform/fileerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QSaveFile>
#include <QTemporaryFile>
#include <filesystem>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zorbo {

namespace {

std::filesystem::path nativepath(const QString &path)
{
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}

Result unwritten(const QString &path, const QFileDevice *file = nullptr)
{
    const QString why = file ? QLatin1Char(' ') + fileerrortext(*file) : QString();
    return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht schreiben; sie bleibt, wie sie war.%2")
                               .arg(QDir::toNativeSeparators(path), why));
}

} // namespace

QString writetargetproblem(const QString &path)
{
    namespace fs = std::filesystem;
    std::error_code error;
    // status() follows links, so a link to a device counts as the device.
    const fs::file_type type = fs::status(nativepath(path), error).type();
    QString what;
    switch (type) {
    case fs::file_type::regular:
    case fs::file_type::not_found:
    case fs::file_type::none: // could not be looked at: the write itself will tell
        return {};
    case fs::file_type::directory:
        what = QStringLiteral("ein Ordner");
        break;
    case fs::file_type::character:
    case fs::file_type::block:
        what = QStringLiteral("ein Gerät");
        break;
    case fs::file_type::fifo:
        what = QStringLiteral("eine Pipe");
        break;
    case fs::file_type::socket:
        what = QStringLiteral("ein Socket");
        break;
    default:
        what = QStringLiteral("etwas Unbekanntes");
        break;
    }
    return QStringLiteral("%1 ist keine gewöhnliche Datei, sondern %2; dorthin wird nicht geschrieben.")
        .arg(QDir::toNativeSeparators(path), what);
}

namespace {

QMutex scratchLock;
QStringList scratchFolders; // each ending in '/'

bool inscratch(const QString &path)
{
    const QMutexLocker locked(&scratchLock);
    const QString absolute = QFileInfo(path).absoluteFilePath();
    for (const QString &f : std::as_const(scratchFolders)) {
        if (absolute.startsWith(f) || absolute + QLatin1Char('/') == f)
            return true;
    }
    return false;
}

} // namespace

ScratchFolder::ScratchFolder(const QString &folder) : m_folder(QFileInfo(folder).absoluteFilePath() + QLatin1Char('/'))
{
    const QMutexLocker locked(&scratchLock);
    scratchFolders << m_folder;
}

ScratchFolder::~ScratchFolder()
{
    const QMutexLocker locked(&scratchLock);
    scratchFolders.removeOne(m_folder);
}

Result replacefile(const QString &path, QByteArrayView bytes, Flush flush)
{
    if (const QString why = writetargetproblem(path); !why.isEmpty())
        return Result::failure(why);
    if (flush == Flush::Disk && inscratch(path))
        flush = Flush::None;
    if (flush == Flush::Disk) {
        QSaveFile file(path);
        // Flushed by hand: Qt's commit writes what it still buffers without
        // telling when that fails (a full disk, a size limit), and would put
        // a cut-off file in place of the whole one.
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), bytes.size()) != bytes.size() || !file.flush()
            || !file.commit())
            return unwritten(path, &file);
        return Result::success();
    }
    // The same way round without waiting for the disk: for files that a
    // later step commits as a whole, where one flush per file would cost more
    // than writing them.
    QTemporaryFile part(path + QStringLiteral(".XXXXXX"));
    if (!part.open() || part.write(bytes.data(), bytes.size()) != bytes.size() || !part.flush())
        return unwritten(path, &part);
    part.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser |
                        QFileDevice::WriteUser | QFileDevice::ReadGroup | QFileDevice::ReadOther);
    part.close();
    std::error_code error;
    std::filesystem::rename(nativepath(part.fileName()), nativepath(path), error);
    if (error)
        return unwritten(path);
    part.setAutoRemove(false);
    return Result::success();
}

bool syncfilesystem(const QString &folder)
{
    if (inscratch(folder))
        return true;
#ifdef Q_OS_LINUX
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (fd < 0)
        return false;
    const bool ok = ::syncfs(fd) == 0;
    ::close(fd);
    return ok;
#else
    Q_UNUSED(folder);
    return true;
#endif
}

} // namespace zorbo
