#include "core/programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace zorbo {

QString programfolder()
{
    const QString appDir = QCoreApplication::applicationDirPath();
    if (!appDir.isEmpty() && QFileInfo(appDir).isWritable())
        return QDir::cleanPath(appDir);
    QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (data.isEmpty())
        data = QDir::homePath() + QStringLiteral("/.zorbo-editor");
    QDir().mkpath(data);
    return QDir::cleanPath(data);
}

} // namespace zorbo
