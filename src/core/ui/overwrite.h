#pragma once

#include <QString>

namespace zorbo {

class Shell;

// Before an export replaces one of the game's files: when the file changed
// since the world last imported or exported it, asks "Überschreiben",
// "Erst vergleichen" or "Abbrechen", with no default; so it does when the
// world's database can't tell, naming why. True when the export
// may go on; "Erst vergleichen" opens the comparison and stops the export.
bool mayoverwrite(Shell &shell, const QString &title, const QString &file);

} // namespace zorbo
