#pragma once

namespace zorbo {

class Shell;

// The crests' entries (import and export of the crest archive, the copy of
// the kit set's ma.res into the game) and the crest pictures and picker,
// lent to the other windows through the shell.
void installresources(Shell &shell);

} // namespace zorbo
