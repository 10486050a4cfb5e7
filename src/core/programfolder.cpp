#include "core/programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace zorbo {

QString installedshare(const QString &executableFolder)
{
    const QDir bin(executableFolder);
    if (executableFolder.isEmpty() || bin.dirName() != QLatin1String("bin"))
        return {};
    const QString share = QDir::cleanPath(bin.absoluteFilePath(QStringLiteral("../share/zorbo-editor")));
    return QFileInfo(share).isDir() ? share : QString();
}

QString userdatafolder()
{
    // Both programs name themselves zorbo-editor, so they share one world.
    QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (data.isEmpty())
        data = QDir::homePath() + QStringLiteral("/.zorbo-editor");
    return QDir::cleanPath(data);
}

QString programfolderfor(const QString &executableFolder)
{
    if (!executableFolder.isEmpty() && installedshare(executableFolder).isEmpty()
        && QFileInfo(executableFolder).isWritable())
        return QDir::cleanPath(executableFolder);
    const QString data = userdatafolder();
    QDir().mkpath(data);
    return data;
}

QString programfolder()
{
    return programfolderfor(QCoreApplication::applicationDirPath());
}

} // namespace zorbo
