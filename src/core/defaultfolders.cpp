#include "core/defaultfolders.h"

#include "core/programfolder.h"
#include "platform/safefile.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace zorbo {

namespace {

struct DeliveredFolder {
    Folder folder;
    const char *resource; // below the delivered pictures' folder
};

constexpr DeliveredFolder delivered[] = {
    {AttributeFolder, "attribute"}, {GesichtFolder, "gesicht"},      {Trikot0Folder, "trikot/original"},
    {Trikot1Folder, "trikot/zorbode"}, {WappenFolder, "wappen"},
};

} // namespace

QStringList unpackdefaults(const Settings &settings)
{
    QStringList problems;
    int unpacked = 0;
    // An installed program copies the pictures from <prefix>/share/zorbo-editor,
    // any other one from those it carries.
    QString root = installedshare(QCoreApplication::applicationDirPath());
    if (root.isEmpty())
        root = QStringLiteral(":/defaults");
    for (const DeliveredFolder &d : delivered) {
        const QString target = settings.folder(d.folder);
        if (target.isEmpty())
            continue;
        if (!QDir().mkpath(target)) {
            problems << QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(target);
            continue;
        }
        const QString source = root + QLatin1Char('/') + QLatin1String(d.resource);
        QDirIterator it(source, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString from = it.next();
            const QString relative = from.mid(source.size() + 1);
            const QString to = target + relative;
            if (QFileInfo::exists(to))
                continue;
            QDir().mkpath(QFileInfo(to).absolutePath());
            QFile resource(from);
            // Each file whole or not at all, but one wait for the disk for
            // all of them: a wait per file made a first start take seconds.
            const Result written = resource.open(QIODevice::ReadOnly)
                                       ? replacefile(to, resource.readAll(), Flush::None)
                                       : Result::failure(QString());
            if (!written) {
                problems << QStringLiteral("Die Datei %1 lässt sich nicht anlegen.").arg(to);
                continue;
            }
            ++unpacked;
        }
    }
    if (unpacked > 0 && !syncfilesystem(settings.folder(AttributeFolder)))
        problems << QStringLiteral("Die Bilder des Programms lassen sich nicht sicher auf die Platte schreiben.");
    return problems;
}

} // namespace zorbo
