#include "resources/crestswitch.h"

#include "platform/safefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>

namespace zorbo {

namespace {

std::filesystem::path nativepath(const QString &path)
{
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}

// Beside the folder, not in it: the folder holds crests and nothing else.
QString lockfile(const QString &wappenFolder)
{
    const QFileInfo folder(QDir::cleanPath(wappenFolder));
    return folder.path() + QStringLiteral("/.") + folder.fileName() + QStringLiteral("-sperre");
}

// Moves what the committed folder still holds over the crests, then removes it.
Result finishswitch(const QString &wappenFolder)
{
    const QString committed = crestCommitted(wappenFolder);
    const QStringList files = QDir(committed).entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : files) {
        std::error_code error;
        std::filesystem::rename(nativepath(committed + name), nativepath(wappenFolder + name), error);
        if (error)
            return Result::failure(QStringLiteral("Der Wappen-Import ist abgeschlossen, aber %1 lässt sich nicht in den "
                                                  "Ordner %2 verschieben; der nächste Lauf versucht es wieder.")
                                       .arg(name, QDir::toNativeSeparators(wappenFolder)));
    }
    if (!QDir().rmdir(committed))
        return Result::failure(QStringLiteral("Der Ordner %1 lässt sich nicht entfernen.").arg(QDir::toNativeSeparators(committed)));
    return Result::success();
}

// Both halves of the recovery; the caller holds the lock.
Result recoverlocked(const QString &wappenFolder)
{
    const QString staging = crestStaging(wappenFolder);
    if (QFileInfo::exists(staging) && !QDir(staging).removeRecursively())
        return Result::failure(QStringLiteral("Die Reste eines abgebrochenen Wappen-Imports in %1 lassen sich nicht "
                                              "entfernen.").arg(QDir::toNativeSeparators(staging)));
    if (QFileInfo::exists(crestCommitted(wappenFolder)))
        return finishswitch(wappenFolder);
    return Result::success();
}

} // namespace

QString crestStaging(const QString &wappenFolder)
{
    return wappenFolder + QStringLiteral(".wappen-neu/");
}

QString crestCommitted(const QString &wappenFolder)
{
    return wappenFolder + QStringLiteral(".wappen-fertig/");
}

Result recovercrests(const QString &wappenFolder)
{
    // A lock file alone is what a run killed after its switch leaves.
    if (wappenFolder.isEmpty()
        || (!QFileInfo::exists(crestStaging(wappenFolder)) && !QFileInfo::exists(crestCommitted(wappenFolder))
            && !QFileInfo::exists(lockfile(wappenFolder))))
        return Result::success();
    FolderLock lock(lockfile(wappenFolder));
    if (!lock.tryLock())
        return Result::success(); // another run is at work and finishes its own switch
    return recoverlocked(wappenFolder);
}

CrestSwitch::CrestSwitch(const QString &wappenFolder) : m_folder(wappenFolder), m_lock(lockfile(wappenFolder)) {}

CrestSwitch::~CrestSwitch()
{
    drop();
}

Result CrestSwitch::begin()
{
    if (!m_lock.tryLock())
        return Result::failure(QStringLiteral("Im Ordner %1 läuft schon ein Wappen-Import.").arg(QDir::toNativeSeparators(m_folder)));
    if (Result r = recoverlocked(m_folder); !r)
        return r;
    if (!QDir().mkpath(staging()))
        return Result::failure(QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(QDir::toNativeSeparators(staging())));
    return Result::success();
}

Result CrestSwitch::commit()
{
    std::error_code error;
    if (syncfilesystem(staging()))
        std::filesystem::rename(nativepath(staging()), nativepath(crestCommitted(m_folder)), error);
    else
        error = std::make_error_code(std::errc::io_error);
    if (error) {
        drop();
        return Result::failure(QStringLiteral("Die neuen Wappen lassen sich nicht übernehmen; alle Wappen in %1 "
                                              "bleiben, wie sie waren.").arg(QDir::toNativeSeparators(m_folder)));
    }
    return finishswitch(m_folder);
}

void CrestSwitch::drop()
{
    if (m_lock.isLocked())
        QDir(staging()).removeRecursively();
}

} // namespace zorbo
