#pragma once

#include "core/world.h"
#include "platform/database.h"
#include "platform/operation.h"
#include "tools/squadnumbers.h"

namespace zorbo {

// The longest club name the game takes.
inline constexpr int longestClubName = 15;

// The clubs (not the national teams) whose names are longer than the game
// takes, in German order of their names.
QList<NamedTeam> longclubnames(Database &db, const Progress &progress = {});

enum class NameCut {
    Whole, // the name as it is
    Left,  // without its first word
    Right, // without its last word
};

// A shorter name proposed for name: words are what lies between blanks, an
// empty one included. A name of one or two words stays whole; what a cut
// leaves is trimmed of blanks at either end.
QString nameproposal(const QString &name, NameCut cut);

// Renames a club of vereine; an empty name is refused. One transaction.
// A rename's step of the history.
Step renameclubstep(qint64 team, const QString &name);

Result renameclub(Database &db, qint64 team, const QString &name);

} // namespace zorbo
