#pragma once

#include "platform/operation.h"

#include <QList>
#include <QStringList>

namespace zorbo {

// Outcome of an import from exporter files: success with the counts, or the
// German message that names file, section and key; nothing was saved then.
struct AnstossResult {
    Result result;
    int clubs = 0;      // clubs of which at least one player was saved
    int players = 0;    // players saved (free players or squad rows)
    int duplicates = 0; // free players read but dropped, as the same player stood there already
    // League lines whose club file exists at neither place, as "Liga/Name".
    QStringList missing;
    QList<Finding> findings;
    // The run stopped before reading because a file reads as UTF-8; run it
    // again with FileEncoding::Utf8 or FileEncoding::Cp1252 as the user says.
    bool looksUtf8 = false;
    // Values kept though the windows don't show them.
    int kept = 0;

    bool ok() const { return result.ok; }
};

} // namespace zorbo
