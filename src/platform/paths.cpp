#include "platform/paths.h"

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

} // namespace zorbo
