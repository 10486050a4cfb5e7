#pragma once

#include "core/kitcolours.h"
#include "platform/operation.h"

#include <QString>

namespace zorbo {

// The rules for the rows of vereine and vereine_national, one set for
// every way a row is written (the editor's team save, the workbench's club
// save, landneu) and for the problem check, which lists stored rows that
// break them.

// A name of nothing but blanks names no team: no team goes by it, and no
// country of that name is made.
bool blankname(const QString &name);

// Whether a team row with this name and, for a club, this country may be
// stored: a team needs a name, a club a country. The message names the
// fields by the captions both forms give them.
Result checkteamrow(TeamTable table, const QString &name, const QString &nation);

} // namespace zorbo
