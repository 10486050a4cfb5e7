#pragma once

namespace zorbo {

class Shell;

// The transfer market's menu and the data care tools: the market fill, the
// market window, the squad number and club name checks, the player
// pictures, and wiping and compacting the database.
void installtools(Shell &shell);

} // namespace zorbo
