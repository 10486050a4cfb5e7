#pragma once

namespace zorbo {

// Once, after the QApplication is made: the program's name, and Qt's own
// German texts for the buttons and the file dialogs, so that no window
// speaks English whatever the system's language. The window's title stays
// as the main window sets it, with no program name put behind it.
// False when the German texts are missing (the package
// qt6-translations-l10n).
bool setupapplication();

} // namespace zorbo
