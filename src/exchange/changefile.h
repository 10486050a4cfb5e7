#pragma once

#include "exchange/worlddiff.h"

#include <QDateTime>

namespace zorbo {

// A change file (.zae): an SQLite file that holds the changes one modder
// made, to be applied to another modder's world.
inline constexpr int changeFileVersion = 1;
inline constexpr int changeFileApplicationId = 0x5A414531; // "ZAE1"

struct ChangeFile {
    int version = changeFileVersion;
    QString program;          // the program version that wrote it
    QDateTime date;
    QString description;      // typed by the user; may be empty
    QByteArray fingerprint;   // of the world it was made from (see worldfingerprint)
    QByteArray changeset;     // the combined changes of the world tables
    // The readable summary: one line per change with where it is grouped.
    QList<EntityChange> summary;
};

// The fingerprint of the world tables of schema: equal worlds, equal prints,
// 16 bytes. Change files of earlier builds hold a 20-byte print of another
// kind (SHA-1 of the same values); such a print is kept and shown as it is,
// and never equals a print of today.
QByteArray worldfingerprint(Database &db, const QString &schema = QStringLiteral("main"));

// Writes the file at path, replacing one there only when it is written whole.
Result writechangefile(const QString &path, const ChangeFile &file);

struct ChangeFileRead {
    Result result;
    ChangeFile file;
};
// Reads a change file; a damaged file, or one that is no change file of
// ours, is refused in German, naming the file.
ChangeFileRead readchangefile(const QString &path);

// The steps of the history from step on (the undone ones left out),
// combined into one change file.
ChangeFileRead changessince(Database &db, qint64 step, const QString &description);
// The changes that turn the world in otherPath into this one.
ChangeFileRead changesagainst(Database &db, const QString &otherPath, const QString &description);

} // namespace zorbo
