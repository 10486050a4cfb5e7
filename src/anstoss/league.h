#pragma once

#include "anstoss/anstossresult.h"
#include "platform/codepage.h"
#include "platform/database.h"

#include <QList>
#include <QString>

namespace zorbo {

// One club file that a league or country file names and that was found.
struct LeagueClub {
    QString league; // the section: league name and folder
    QString name;   // base name of the club file, as the line gives it
    QString path;   // the file as found on disk
};

struct LeagueList {
    QList<LeagueClub> clubs;  // in file order; a club found at both places twice, D first
    QStringList missing;      // "Liga/Name" of lines found at neither place
};

// Reads a .lig or .lan file: the first section's Land names the country's
// folder L beside the file's folder D; each later section is a league whose
// lines name club files, tried as D/league/name.aet and L/league/name.aet.
// A file is also found when its name differs only in case. Throws Fault when
// the file can't be read, holds nothing of a league or country file, or
// names no club file that is found; *looksUtf8 tells a file stopped as UTF-8.
LeagueList readleague(const QString &path, FileEncoding encoding = FileEncoding::Detect, bool *looksUtf8 = nullptr);

// The path of an existing plain file that equals path but for the case of
// its names, the exact spelling first; empty when there is none.
QString findfilenocase(const QString &path);

// Every club file of a league or country file into the free players, in one
// transaction for the whole file: a refused club saves nothing of any.
// Reports one step per club file (done, total) and asks leagueshown about
// each league as the run reaches it, so that a window can name it.
// The encoding holds for the league file and every club file.
AnstossResult importleague(Database &db, const QString &path, const Progress &progress = {},
                           const std::function<void(const QString &league)> &leagueshown = {},
                           FileEncoding encoding = FileEncoding::Detect);

} // namespace zorbo
