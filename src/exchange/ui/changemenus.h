#pragma once

#include <QtGlobal>

class QString;

namespace zorbo {

class Shell;

// The menu entries: "Änderungen exportieren...", "Änderungen anwenden...",
// "Welten vergleichen...".
void installchanges(Shell &shell);

// Opens "Welten vergleichen" on this world against the game files (either
// may be empty), as after a merge the game files' own view of the world.
void opencomparison(Shell &shell, const QString &teams, const QString &players);

// Reads a change file and shows its preview with the conflicts; the user
// applies it from there. A file that can't be read is named in a warning.
void openchangefile(Shell &shell, const QString &path);

// Exports the steps from the history's step on as a change file, asking for
// the description and the file.
void exportchangesfrom(Shell &shell, qint64 step);

} // namespace zorbo
