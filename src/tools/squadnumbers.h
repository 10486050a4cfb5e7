#pragma once

#include "core/world.h"
#include "platform/database.h"
#include "platform/operation.h"

#include <QList>
#include <QString>

namespace zorbo {

struct NamedTeam {
    qint64 nummer = -1;
    QString name;
};

// A line of a squad sorted by squad number.
struct SquadLine {
    qint64 player = -1;
    qint64 number = 0;
    QString name;
    QString vorname;
    bool repeat = false; // the same number as the line above (the first line is compared with 0)

    // "*7 Müller, T.": the mark, the number, a blank, name, ", ", first name.
    QString text() const;
};

// The clubs and national teams (never the market) in which two players
// wear the same squad number, by team number.
QList<NamedTeam> clubswithrepeats(Database &db, const Progress &progress = {});

// The squad of a team, sorted by squad number, repeats marked.
QList<SquadLine> squadlines(Database &db, qint64 team);

// Whether a repeat shows within the first 20 lines; a team whose first 20
// lines show none leaves the window's list.
bool repeatshown(const QList<SquadLine> &lines);

// Gives a player a new squad number; numbers of 0 and below are refused.
// One transaction.
// A squad number's step of the history.
Step squadnumberstep(qint64 player, qint64 number);

Result setsquadnumber(Database &db, qint64 player, qint64 number);

} // namespace zorbo
