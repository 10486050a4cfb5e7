#pragma once

#include "editor/facecode.h"
#include "platform/database.h"
#include "platform/operation.h"

#include <QSet>
#include <QString>

namespace zorbo {

// The face pictures in a gesicht folder, read once: which exist, how many
// there are of each part, and which stands in for a missing one.
class FacePictures {
public:
    FacePictures() = default;
    explicit FacePictures(const QString &folder); // folder ends in a separator

    QString folder() const { return m_folder; }
    bool exists(int farbe, int part, int number) const;
    // Files matching sp_gesicht_<C>_<P>_*.gif: the slider's range is 0 to count - 1.
    int count(int farbe, int part) const;
    // The digit whose picture stands in for `digit`: the nearest lower one that
    // exists, or 0 when none exists down to picture 1.
    int standin(int farbe, int part, int digit) const;
    // The path of the picture shown for a digit; empty when none stands in.
    QString path(int farbe, int part, int digit) const;

    // checkgesicht: every digit falls to the highest picture at or below it.
    qint64 checkgesicht(qint64 code) const;

private:
    QString m_folder;
    QSet<QString> m_names;
    int m_counts[2][5] = {};
};

struct FaceCheck {
    Result result;
    int corrected = 0;
};

// How many face codes checkallgesichter would repair; writes nothing.
FaceCheck countgesichter(Database &db, const FacePictures &pictures, const Progress &progress = {});
// checkallgesichter without its window: repairs every player's face code.
FaceCheck checkallgesichter(Database &db, const FacePictures &pictures, const Progress &progress = {});

} // namespace zorbo
