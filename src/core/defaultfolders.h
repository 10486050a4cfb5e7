#pragma once

#include "core/settings.h"

#include <QStringList>

namespace zorbo {

// Creates the delivered picture folders (talents, faces, both kit sets,
// crests) where they are missing and copies every delivered file that the
// folder lacks. Existing files are never overwritten. Returns one German
// line per file or folder that could not be made; missing pictures never
// stop the start.
QStringList unpackdefaults(const Settings &settings);

} // namespace zorbo
