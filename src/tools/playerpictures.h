#pragma once

#include "platform/database.h"
#include "platform/operation.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace zorbo {

// A player a picture may show.
struct PictureCandidate {
    qint64 nummer = -1;
    // "Name V. (Land; 3,5 Sterne), Verein, Nr. 7 [1234]": squad number and,
    // in brackets, player number.
    QString line;
};

// The pictures of folder still to be assigned: .jpg files (in any case)
// whose names begin with a letter a to z, ä, ö or ü, in either case, sorted
// by name. A picture already named by its number begins with a digit.
QStringList namedpictures(const QString &folder);

// The players a picture's name stands for: "Name_Vorname.jpg" the players
// of that surname whose stored first name ("B." or "Björn") begins with
// Vorname's first letter,
// "Name.jpg" all players of that surname; names compared as the game's
// names are (case aside). decimalSign is the one of the candidate lines.
QList<PictureCandidate> picturecandidates(Database &db, const QString &file, QChar decimalSign);

// Renames the picture file of folder to <nummer>.jpg. A picture already
// standing there (under any case of its extension) is moved into the
// subfolder "ersetzt" first, under a name no file there has; so no picture
// is ever lost.
Result assignpicture(const QString &folder, const QString &file, qint64 nummer);

struct PictureRun {
    Result result;
    int assigned = 0;
    QStringList unmatched; // pictures no player fits, left as they are
    // Pictures with several candidates that were not decided, with them.
    QList<QPair<QString, QList<PictureCandidate>>> undecided;
};

// Asked for a picture with several candidates: the number of the player
// chosen; nothing leaves the picture as it is; stop (when given) ends the run.
using PictureChoice =
    std::function<std::optional<qint64>(const QString &file, const QList<PictureCandidate> &candidates, bool *stop)>;

// Goes through the named pictures from the last to the first: one
// candidate gets the picture at once, several are put to choose (none
// given: the picture waits in undecided), none leaves the file alone.
PictureRun assignpictures(Database &db, const QString &folder, QChar decimalSign, const PictureChoice &choose = {},
                          const Progress &progress = {});

} // namespace zorbo
