#pragma once

#include "editor/kitart.h"

#include <optional>

namespace zorbo {

// A window with the three kit previews that the kit picker works for: the
// main window's team tab now, the import workbench later.
class KitTarget {
public:
    virtual ~KitTarget() = default;
    virtual int kitart(int slot) const = 0;
    // Shows art on the slot; without colours the figure keeps its own.
    virtual void showkit(int slot, int art, const std::optional<KitColours> &colours) = 0;
};

} // namespace zorbo
