#include "resources/resf.h"

#include "platform/codepage.h"
#include "resources/bytes.h"
#include "resources/filebytes.h"
#include "resources/gfp.h"

#include <QDir>
#include <QFile>
#include <cstring>

namespace zorbo {

namespace {

Result badheader(const ResArchive &archive, const QString &why)
{
    return Result::failure(QStringLiteral("Das Archiv %1 ist beschädigt: %2").arg(archive.file, why));
}

} // namespace

bool isresfile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(4) == "RESF";
}

Result loadresarchive(const QString &path, ResArchive &archive)
{
    archive.file = shortname(path);
    if (Result r = readfilebytes(path, ResMaxFileSize, archive.data); !r)
        return r;
    if (!archive.data.startsWith("RESF"))
        return Result::failure(QStringLiteral("Die Datei %1 ist kein RESF-Archiv.").arg(path));
    return Result::success();
}

Result readresheader(const ResArchive &archive, ResHeader &header)
{
    const QByteArray &d = archive.data;
    if (d.size() < ResHeaderSize || !d.startsWith("RESF"))
        return badheader(archive, QStringLiteral("der Kopf ist unvollständig."));
    ResHeader h{getlong(d, 4), getlong(d, 8)};
    if (h.count < 0)
        return badheader(archive, QStringLiteral("unmögliche Anzahl %1.").arg(h.count));
    if (h.dirpos < ResHeaderSize || h.dirpos > d.size())
        return badheader(archive, QStringLiteral("das Verzeichnis bei %1 liegt außerhalb der Datei (%2 Bytes).")
                                      .arg(h.dirpos).arg(d.size()));
    const qint64 needed = qint64(h.count) * (8 + ResNameSize);
    if (!inside(h.dirpos, needed, d.size()))
        return badheader(archive, QStringLiteral("%1 Einträge passen nicht in die Datei (%2 Bytes).")
                                      .arg(h.count).arg(d.size()));
    header = h;
    return Result::success();
}

Result readresdir(const ResArchive &archive, const ResHeader &header, QList<ResEntry> &entries)
{
    const QByteArray &d = archive.data;
    if (!inside(header.dirpos, qint64(header.count) * (8 + ResNameSize), d.size()))
        return badheader(archive, QStringLiteral("das Verzeichnis reicht über das Ende hinaus."));
    QList<ResEntry> list;
    list.reserve(header.count);
    for (qint32 i = 0; i < header.count; ++i) {
        const qint64 at = header.dirpos + 8 * qint64(i);
        const char *name = d.constData() + header.namesOffset() + qint64(i) * ResNameSize;
        list.append({getlong(d, at), getlong(d, at + 4), QByteArray(name, qstrnlen(name, ResNameSize))});
    }
    entries = std::move(list);
    return Result::success();
}

Result openresarchive(const QString &path, ResContents &contents)
{
    if (Result r = loadresarchive(path, contents.archive); !r)
        return r;
    return readresarchive(contents);
}

Result readresarchive(ResContents &contents)
{
    if (Result r = readresheader(contents.archive, contents.header); !r)
        return r;
    return readresdir(contents.archive, contents.header, contents.entries);
}

QString badnamereason(const QByteArray &name)
{
    if (name.isEmpty())
        return QStringLiteral("der Name ist leer");
    if (name.size() > 255)
        return QStringLiteral("der Name ist länger als 255 Zeichen");
    if (name.contains(".."))
        return QStringLiteral("der Name enthält „..“");
    for (const char c : name) {
        const auto u = (unsigned char)c;
        if (u < 0x20 || u == 0x7F)
            return QStringLiteral("der Name enthält Steuerzeichen");
        if (std::strchr("/\\:*?\"<>|", c))
            return QStringLiteral("der Name enthält das Zeichen „%1“").arg(QLatin1Char(c));
    }
    return {};
}

QString printablename(const QByteArray &name)
{
    QString text = fromCp1252(name.left(64));
    for (QChar &c : text)
        if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            c = QLatin1Char('?');
    return name.size() > 64 ? text + QStringLiteral("…") : text;
}

Result resourcebytes(const ResArchive &archive, const ResHeader &header, const ResEntry &entry, QByteArray &bytes)
{
    const QString what = QStringLiteral("Der Eintrag %1 in %2").arg(printablename(entry.name), archive.file);
    const QByteArrayView d(archive.data);
    const qint64 end = header.dirpos;
    if (entry.offset < ResHeaderSize || entry.offset >= end)
        return Result::failure(QStringLiteral("%1 ist beschädigt: die Position %2 liegt außerhalb der Daten.")
                                   .arg(what).arg(entry.offset));
    if (entry.type == ResTypeSized) {
        if (!inside(entry.offset, 4, end))
            return Result::failure(QStringLiteral("%1 ist beschädigt: die Länge fehlt.").arg(what));
        const qint64 length = getlong(d, entry.offset);
        if (!inside(entry.offset + 4, length, end))
            return Result::failure(QStringLiteral("%1 ist beschädigt: die Länge %2 reicht über die Daten hinaus.")
                                       .arg(what).arg(length));
        bytes = d.sliced(entry.offset + 4, length).toByteArray();
        return Result::success();
    }
    GfpHeader gfp;
    qint64 length = 0;
    if (Result r = readgfpheader(d.sliced(entry.offset, end - entry.offset), what, gfp, length); !r)
        return r;
    bytes = d.sliced(entry.offset, length).toByteArray();
    return Result::success();
}

Result extractgfp(const ResArchive &archive, const ResHeader &header, const ResEntry &entry,
                  const QString &folder, QString &name)
{
    if (const QString why = badnamereason(entry.name); !why.isEmpty())
        return Result::failure(QStringLiteral("Der Eintrag „%1“ in %2 wird übersprungen: %3.")
                                   .arg(printablename(entry.name), archive.file, why));
    QByteArray bytes;
    if (Result r = resourcebytes(archive, header, entry, bytes); !r)
        return r;
    if (!QDir().mkpath(folder))
        return Result::failure(QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(folder));
    name = fromCp1252(entry.name);
    return writefilebytes(QDir(folder).filePath(name + QStringLiteral(".gfp")), bytes);
}

} // namespace zorbo
