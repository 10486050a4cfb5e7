#include "core/defaultfolders.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace zorbo {

namespace {

struct DeliveredFolder {
    Folder folder;
    const char *resource; // below :/defaults
};

constexpr DeliveredFolder delivered[] = {
    {AttributeFolder, "attribute"}, {GesichtFolder, "gesicht"},      {Trikot0Folder, "trikot/original"},
    {Trikot1Folder, "trikot/zorbode"}, {WappenFolder, "wappen"},
};

} // namespace

QStringList unpackdefaults(const Settings &settings)
{
    QStringList problems;
    for (const DeliveredFolder &d : delivered) {
        const QString target = settings.folder(d.folder);
        if (target.isEmpty())
            continue;
        if (!QDir().mkpath(target)) {
            problems << QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(target);
            continue;
        }
        const QString source = QStringLiteral(":/defaults/") + QLatin1String(d.resource);
        QDirIterator it(source, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString from = it.next();
            const QString relative = from.mid(source.size() + 1);
            const QString to = target + relative;
            if (QFileInfo::exists(to))
                continue;
            QDir().mkpath(QFileInfo(to).absolutePath());
            if (!QFile::copy(from, to)) {
                problems << QStringLiteral("Die Datei %1 lässt sich nicht anlegen.").arg(to);
                continue;
            }
            // Files from the resources are read-only; the user owns the copies.
            QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
        }
    }
    return problems;
}

} // namespace zorbo
