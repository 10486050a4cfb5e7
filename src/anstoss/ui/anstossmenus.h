#pragma once

namespace zorbo {

class Shell;

// The Anstoss import's entries. The import itself is still to come; the
// toolbar's button shows whether the world holds the free players' table
// it fills.
void installanstoss(Shell &shell);

} // namespace zorbo
