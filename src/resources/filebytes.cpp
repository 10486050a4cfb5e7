#include "resources/filebytes.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace zorbo {

QString shortname(const QString &path)
{
    return QFileInfo(path).fileName();
}

Result readfilebytes(const QString &path, qint64 maxSize, QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht öffnen: %2").arg(path, file.errorString()));
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
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), bytes.size()) != bytes.size() || !file.commit())
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht schreiben: %2").arg(path, file.errorString()));
    return Result::success();
}

} // namespace zorbo
