#pragma once

#include "core/settings.h"
#include "platform/database.h"
#include "platform/operation.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace zorbo {

// What the world remembers of one of the game's files at its last import or
// export: size, time of the last change and a 128-bit print of the content.
struct FileFingerprint {
    qint64 size = 0;
    QDateTime time;
    QByteArray print;
};

// The fingerprint of the file as it lies on disk now; empty when it is no
// readable file.
std::optional<FileFingerprint> fingerprint(const QString &path);

// Remembers the file as it lies on disk now (after an import or an export).
// Written beside the history, never as a step of it.
void rememberfile(Database &db, const QString &path);

// What the world holds of the file; empty when it remembers nothing of it.
std::optional<FileFingerprint> rememberedfile(Database &db, const QString &path);

// Whether an export over the file must ask first: the world remembers the
// file, and its size, its time or its content differ now. A file the world
// knows nothing of, or that does not exist, is no question. *when (if given)
// receives the file's present time of change.
bool changedsince(Database &db, const QString &path, QDateTime *when = nullptr);

// The German words of the question and of the command line's refusal:
// "Die Datei … wurde am 24.11.2026 um 21:14:03 geändert, nach dem letzten
// Import oder Export des Editors."
QString changedwords(const QString &path, const QDateTime &when);

// One difference between a game file and what the editor writes back.
// line counts from 1 (0: not a line); crest names the crest of an archive.
struct FileDifference {
    QString file;
    int line = 0;
    QString crest;
    QString game;   // what the game's file holds
    QString ours;   // what the editor would write
    QString reason; // why, where it is known
    // "1_tm.cfg, Zeile 12: …" or "wa.res, Wappen vereins_wappen_5: …"
    QString place() const;
};

// A difference list is cut here; the answer then says how many more there were.
inline constexpr int maxDifferences = 500;

// One file the self-check reads into a scratch world and writes back: its
// name in the game's folder, the folder of the settings where it lies, and
// the run that reads path, writes it to scratch (an empty folder of its own)
// and lists every difference.
struct GameFileCheck {
    QString name;
    Folder folder;
    std::function<Result(const Settings &settings, const QString &path, const QString &scratch,
                         const Progress &progress, QList<FileDifference> &differences)>
        run;
};

struct SelfCheckReport {
    Result result;                     // fails when a file could not be checked at all
    QStringList checked;               // the files found and checked, full paths
    QList<FileDifference> differences; // empty: every file came back unchanged
    int more = 0;                      // differences beyond maxDifferences, not listed
    bool unchanged() const { return result.ok && differences.isEmpty() && !checked.isEmpty(); }
};

// Where the check finds a game file: in gameFolder when one is given (the
// name in any case), else in the settings' folder of the file. Empty when
// it is not there.
QString gamefilepath(const Settings &settings, const QString &gameFolder, const GameFileCheck &check);

// Checks those of the files that the folder holds, one after the other, each
// in a scratch folder of its own that goes afterwards; the user's world is
// not touched. The progress counts per file from 0 to 1000.
SelfCheckReport selfcheck(const Settings &settings, const QString &gameFolder, const QList<GameFileCheck> &checks,
                          const Progress &progress = {});

// The closing words: "Alle drei Dateien kommen unverändert zurück." or how
// many differences were found in how many files.
QString selfcheckwords(const SelfCheckReport &report);

} // namespace zorbo
