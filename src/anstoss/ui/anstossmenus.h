#pragma once

#include <QString>

namespace zorbo {

class Shell;

// The Anstoss import's entries: a club file (mnuimportitem(2), toolbar
// impanstoss4) or a league or country file (mnuimportitem(3)). The toolbar's
// button shows whether the world holds the free players' table.
void installanstoss(Shell &shell);

// One exporter club: frma4open asks for the free players or a club to
// replace, then runs the free-player import or opens the workbench.
// A file that reads as UTF-8 is read as such only when the user says so.
void importa4club(Shell &shell, const QString &file, const QString &clubname);

} // namespace zorbo
