#pragma once

#include <QString>
#include <QStringList>

namespace zorbo {

// What a team file says about its club, to preselect country and club when
// the file is opened.
struct TeamFileHints {
    QString nation;
    QString name;
    QString stadt;
};

TeamFileHints readteamfilehints(const QString &path);

// The entry of a club list ("Name (Land)") that the file most likely means,
// or -1: the last entry whose town and country end the entry, unless an
// earlier entry's club name is found in the file's name, which ends the search.
int teamfileclub(const QStringList &entries, const TeamFileHints &hints);

} // namespace zorbo
