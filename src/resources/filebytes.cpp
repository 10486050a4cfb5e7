#include "resources/filebytes.h"

#include "platform/safefile.h"

#include <QFile>
#include <QFileInfo>

namespace zorbo {

QString shortname(const QString &path)
{
    return QFileInfo(path).fileName();
}

Result readfilebytes(const QString &path, qint64 maxSize, QByteArray &bytes)
{
    QFile file(path);
    // The system's own error texts are English; the user reads German.
    if (!QFileInfo(path).isFile())
        return Result::failure(QStringLiteral("Die Datei %1 fehlt.").arg(path));
    if (!file.open(QIODevice::ReadOnly))
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht öffnen.").arg(path));
    const qint64 size = file.size();
    if (size > maxSize)
        return Result::failure(QStringLiteral("Die Datei %1 ist mit %2 Bytes zu groß (höchstens %3).")
                                   .arg(path).arg(size).arg(maxSize));
    bytes = file.read(maxSize + 1);
    if (bytes.size() > maxSize || file.error() != QFileDevice::NoError)
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht lesen.").arg(path));
    return Result::success();
}

Result writefilebytes(const QString &path, QByteArrayView bytes)
{
    // No flush to the disk, which would cost more than the conversion for a
    // folder of a thousand crests; a crest run commits its files as a whole.
    return replacefile(path, bytes, Flush::None);
}

} // namespace zorbo
