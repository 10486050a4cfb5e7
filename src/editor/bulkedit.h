#pragma once

#include "core/world.h"
#include "editor/facepictures.h"
#include "editor/playerfields.h"
#include "platform/operation.h"

#include <QList>
#include <QString>

namespace zorbo {

// One edit that a bulk edit makes on every player it is given.
struct PlayerEdit {
    enum Kind {
        Set,           // the field to a value, typed as the CSV file has it
        StepStrength,  // Stärke by steps half stars; the maximum follows when the strength passes it
        StepMaximum,   // Maxstärke by steps half stars
        Renumber,      // squad numbers of their clubs 1 to n, by position, name and first name
        NewFaces,      // a new face drawn from the face pictures there are
        ClearTalents,  // Erlernt and Gesperrt emptied
    };
    Kind kind = Set;
    QString field; // Set: a heading of playerfields() (Land, Position, Resteinsätze, Größe, Vorname, ...)
    QString value; // Set: the value as text
    int steps = 0; // StepStrength, StepMaximum: half stars, may be negative

    static PlayerEdit set(const QString &field, const QString &value) { return {Set, field, value, 0}; }
    static PlayerEdit strength(int steps) { return {StepStrength, {}, {}, steps}; }
    static PlayerEdit maximum(int steps) { return {StepMaximum, {}, {}, steps}; }
    static PlayerEdit of(Kind kind) { return {kind, {}, {}, 0}; }
};

// Reads an edit as the command line writes it: FIELD=VALUE, "Stärke+1" (half
// stars up or down), "Rückennummern", "Gesichter", "Talente löschen".
std::optional<PlayerEdit> parseedit(const QString &text, QString *error);

struct BulkEditResult {
    Result result;
    QList<Finding> findings;
    int changed = 0;              // players whose rows change
    QList<PlayerChange> preview;  // the first of them, before and after
};

// Works the edits out on the players (NUMMER of spieler) in the order given.
// Strengths stay within 0 to 6 stars; an edit that would set a value the
// windows refuse, or put a maximum below a strength, is refused naming the
// field and the player, and nothing is written. Writes only when apply;
// previewRows limits the preview. faces serves NewFaces.
BulkEditResult bulkedit(Database &db, const QList<qint64> &players, const QList<PlayerEdit> &edits,
                        const FacePictures &faces, bool apply, int previewRows = 50);

// Rows beyond which a bulk edit keeps a restore point first.
inline constexpr int bulkRestoreRows = 300;

// The bulk edit as one step of the world's history, after a restore point
// when it works on more than bulkRestoreRows players; no step and no point
// when it changes nothing.
BulkEditResult runbulkedit(World &world, const QList<qint64> &players, const QList<PlayerEdit> &edits,
                           const FacePictures &faces);

} // namespace zorbo
