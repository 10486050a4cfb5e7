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

// Moves what the committed folder still holds over the crests, then removes it.
Result finishswitch(const QString &wappenFolder)
{
    const QString committed = crestCommitted(wappenFolder);
    const QStringList files = QDir(committed).entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : files) {
        std::error_code error;
        std::filesystem::rename(nativepath(committed + name), nativepath(wappenFolder + name), error);
        // Gone meanwhile means moved by another run, which is as good.
        if (error && QFileInfo::exists(committed + name))
            return Result::failure(QStringLiteral("Der Wappen-Import ist abgeschlossen, aber %1 lässt sich nicht in den "
                                                  "Ordner %2 verschieben; der nächste Lauf versucht es wieder.")
                                       .arg(name, QDir::toNativeSeparators(wappenFolder)));
    }
    if (!QDir().rmdir(committed) && QFileInfo::exists(committed))
        return Result::failure(QStringLiteral("Der Ordner %1 lässt sich nicht entfernen.").arg(QDir::toNativeSeparators(committed)));
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
    if (wappenFolder.isEmpty())
        return Result::success();
    const QString staging = crestStaging(wappenFolder);
    if (QFileInfo::exists(staging) && !QDir(staging).removeRecursively())
        return Result::failure(QStringLiteral("Die Reste eines abgebrochenen Wappen-Imports in %1 lassen sich nicht "
                                              "entfernen.").arg(QDir::toNativeSeparators(staging)));
    if (QFileInfo::exists(crestCommitted(wappenFolder)))
        return finishswitch(wappenFolder);
    return Result::success();
}

Result beginswitch(const QString &wappenFolder)
{
    if (Result r = recovercrests(wappenFolder); !r)
        return r;
    if (!QDir().mkpath(crestStaging(wappenFolder)))
        return Result::failure(QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.")
                                   .arg(QDir::toNativeSeparators(crestStaging(wappenFolder))));
    return Result::success();
}

Result commitswitch(const QString &wappenFolder)
{
    const QString staging = crestStaging(wappenFolder);
    std::error_code error;
    if (syncfilesystem(staging))
        std::filesystem::rename(nativepath(staging), nativepath(crestCommitted(wappenFolder)), error);
    else
        error = std::make_error_code(std::errc::io_error);
    if (error) {
        dropswitch(wappenFolder);
        return Result::failure(QStringLiteral("Die neuen Wappen lassen sich nicht übernehmen; alle Wappen in %1 "
                                              "bleiben, wie sie waren.").arg(QDir::toNativeSeparators(wappenFolder)));
    }
    return finishswitch(wappenFolder);
}

void dropswitch(const QString &wappenFolder)
{
    QDir(crestStaging(wappenFolder)).removeRecursively();
}

} // namespace zorbo
