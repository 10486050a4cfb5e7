#pragma once

#include "platform/operation.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace zorbo {

// The RESF archive: "RESF", Long count, Long dirpos, the resources, then at
// dirpos count pairs of Long type and Long offset, then count names of 256
// bytes. Type 16 puts a Long length in front of each resource.
inline constexpr qint32 ResTypeGfp = 14;
inline constexpr qint32 ResTypeSized = 16;
inline constexpr int ResHeaderSize = 12;
inline constexpr int ResNameSize = 256;
// Far beyond a thousand crests; keeps a mistaken choice of file from being read whole.
inline constexpr qint64 ResMaxFileSize = 1024LL * 1024 * 1024;

struct ResHeader {
    qint32 count = 0;
    qint32 dirpos = 0;
    qint64 namesOffset() const { return qint64(dirpos) + 8 * qint64(count); }
};

struct ResEntry {
    qint32 type = 0;
    qint32 offset = 0;
    QByteArray name; // the bytes before the first zero byte
};

// The archive's bytes and its file name for messages.
struct ResArchive {
    QString file;
    QByteArray data;
};

bool isresfile(const QString &path);
Result loadresarchive(const QString &path, ResArchive &archive);

// Checks count and dirpos against the archive's size: the directory and the
// names must lie inside it, behind the 12-byte header.
Result readresheader(const ResArchive &archive, ResHeader &header);
// The directory; offsets are checked per entry when a resource is taken.
Result readresdir(const ResArchive &archive, const ResHeader &header, QList<ResEntry> &entries);

// An archive read whole, with its header and directory checked.
struct ResContents {
    ResArchive archive;
    ResHeader header;
    QList<ResEntry> entries;
};
// Reads the archive at path and checks its header and directory; the
// message of the first of them that fails.
Result openresarchive(const QString &path, ResContents &contents);
// Header and directory of contents.archive, already in memory.
Result readresarchive(ResContents &contents);

// A name that may become a file name: not empty, at most 255 bytes, no path
// parts ('/', '\\', ':', ".."), no control characters and none of the
// characters that Windows forbids in names. Empty result means acceptable.
QString badnamereason(const QByteArray &name);

// The resource's bytes. For type 16 the Long length in front of it, for any
// other type the .gfp header, says how long it is; either must end before the
// directory.
Result resourcebytes(const ResArchive &archive, const ResHeader &header, const ResEntry &entry, QByteArray &bytes);

// Writes the entry's .gfp as <folder>/<name>.gfp (creating folder) and gives
// the name, after checking it is a plain name and the resource is whole.
Result extractgfp(const ResArchive &archive, const ResHeader &header, const ResEntry &entry,
                  const QString &folder, QString &name);

// The name for messages and listings: control characters shown as '?', cut
// at 64 characters, so that a hostile name cannot garble a report.
QString printablename(const QByteArray &name);

} // namespace zorbo
