#include "platform/paths.h"

#include <QDir>

namespace zorbo {

QString folderpath(const QString &value)
{
    if (value.isEmpty())
        return value;
    QString path = value;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!path.endsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    return path;
}

QString folderbelow(const QString &value, const QString &base)
{
    const QString path = folderpath(value);
    if (path.isEmpty())
        return path;
    const bool drive = path.size() >= 2 && path[0].isLetter() && path[1] == QLatin1Char(':');
    if (drive || QDir::isAbsolutePath(path))
        return path;
    return folderpath(QDir::cleanPath(base + QLatin1Char('/') + path));
}

} // namespace zorbo
