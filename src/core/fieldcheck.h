#pragma once

#include "platform/operation.h"

#include <QString>
#include <optional>

namespace zorbo {

// A whole number as a user types it: optional blanks around, optional sign,
// digits only. Empty text and letters give nothing.
std::optional<qint64> parsewholenumber(const QString &text);

// Checks a typed whole number before anything is written; the message names
// the field by its caption, e.g. "Sitzplätze:".
Result checkwholenumber(const QString &caption, const QString &text, qint64 *value = nullptr);

} // namespace zorbo
