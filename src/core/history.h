#pragma once

#include "platform/database.h"
#include "platform/operation.h"

#include <QDateTime>
#include <QList>
#include <QRegularExpression>
#include <QString>

namespace zorbo {

// One step of the world's history: the rows one run changed, kept in the
// table verlauf of the world's own database so that it outlives the program.
struct HistoryStep {
    qint64 id = 0;      // grows with every step; 0 stands for "before the first kept step"
    QDateTime time;     // local time of the run
    QString text;       // German: "Verein „FC Köln“ gespeichert"
    bool undone = false; // the step is undone and waits to be redone
    qint64 bytes = 0;   // size of the kept changes
};

// The checksum a step keeps of its changes, tied to its number, so that a
// step whose bytes were changed or swapped with another's is known. It is
// read again at every undo and redo of the step, megabytes after a whole
// import: a quick 128-bit print, not a cryptographic hash.
QByteArray stepchecksum(qint64 id, const QByteArray &changes);
// Whether sum is the checksum of the step's changes, of this version or of
// an earlier one.
bool stepchecksumholds(qint64 id, const QByteArray &changes, const QByteArray &sum);

// The kept steps, oldest first. Undone steps follow the done ones.
QList<HistoryStep> historysteps(Database &db);

// The number of kept steps and the bytes they take.
struct HistorySize {
    qint64 steps = 0;
    qint64 bytes = 0;
};
HistorySize historysize(Database &db);

// A copy of the whole world in the folder "sicherungen" beside zorbo.mdb,
// kept before a run that replaces or removes many rows.
struct RestorePoint {
    QString name;   // file name, also what "restore NAME" takes
    QString path;
    QDateTime time;
    QString reason; // German: "Config-Import", "Datenbank löschen" …, or the
                    // name the user gave a point made by hand
    bool byhand = false; // made by the user; never pruned
    qint64 size = 0;
    qint64 clubs = -1;   // -1 when the copy can't be read
    qint64 players = -1;
};

// The folder of the restore points of a program folder.
QString restorepointfolder(const QString &programFolder);

// The file name of a restore point: "2026-11-24_14-03-05_Config-Import.mdb",
// with ".2" behind the time for a second point in the same second, and
// "von Hand_" before the name of a point the user made by hand. Captures:
// 1 the time, 2 the number within the second, 3 the mark of a point made by
// hand, 4 the reason.
const QRegularExpression &restorepointname();
inline const QString byhandmark = QStringLiteral("von Hand_");

// The restore points of the folder, newest first. Files in it that are no
// restore points of ours are left out and left alone.
// counted: with the numbers of clubs and players, which opens each copy.
QList<RestorePoint> restorepoints(const QString &programFolder, bool counted = true);

} // namespace zorbo
