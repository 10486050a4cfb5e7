#include "platform/registry.h"

#include <QDir>
#include <QFileInfo>

namespace zorbo {

QString wineprefix()
{
    QString prefix = qEnvironmentVariable("WINEPREFIX");
    if (prefix.isEmpty())
        prefix = QDir::homePath() + QLatin1String("/.wine");
    while (prefix.size() > 1 && prefix.endsWith(QLatin1Char('/')))
        prefix.chop(1);
    return prefix;
}

namespace {

// The folder that stands for a drive letter. dosdevices is what Wine itself
// follows; drive_c is where it normally points and gives the plainer path.
QString driveFolder(const QString &prefix, QChar letter)
{
    const QString drive = QString(letter.toLower());
    const QString plain = prefix + QLatin1String("/drive_") + drive;
    const QFileInfo device(prefix + QLatin1String("/dosdevices/") + drive + QLatin1Char(':'));
    if (!device.exists())
        return plain;
    const QString target = device.canonicalFilePath();
    if (target == QFileInfo(plain).canonicalFilePath())
        return plain;
    return target;
}

// The entry of folder whose name equals part: exactly if it exists,
// otherwise without regard to case; empty when there is none.
QString matchEntry(const QString &folder, const QString &part)
{
    if (QFileInfo::exists(folder + QLatin1Char('/') + part))
        return part;
    const QStringList entries =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                               QDir::Name);
    for (const QString &entry : entries) {
        if (entry.compare(part, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return {};
}

} // namespace

QString winepath(const QString &windowsPath, const QString &prefix)
{
    QString rest = windowsPath;
    rest.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const bool hasDrive = rest.size() >= 2 && rest[1] == QLatin1Char(':') && rest[0].isLetter();
    if (!hasDrive)
        return rest;

    QString path = driveFolder(prefix, rest[0]);
    const bool trailingSlash = rest.endsWith(QLatin1Char('/')) && rest.size() > 3;
    const QStringList parts = rest.mid(2).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    // Once a part is missing, nothing below it can exist: the rest stays as given.
    bool exists = QFileInfo(path).isDir();
    for (const QString &part : parts) {
        QString name = part;
        if (exists && part != QLatin1String(".") && part != QLatin1String("..")) {
            const QString match = matchEntry(path, part);
            if (match.isEmpty())
                exists = false;
            else
                name = match;
        }
        path += QLatin1Char('/') + name;
    }
    if (trailingSlash)
        path += QLatin1Char('/');
    return path;
}

} // namespace zorbo
