#pragma once

namespace zorbo {

class Shell;

// The file menu's runs with the game's files: the configuration files in
// and out, a club's team file opened and saved.
void installexchange(Shell &shell);

} // namespace zorbo
