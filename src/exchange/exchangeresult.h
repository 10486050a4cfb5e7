#pragma once

#include "platform/operation.h"

#include <QList>

namespace zorbo {

// Outcome of an exchange run: success or the German message that names file,
// line and field, the counts a window shows afterwards, and findings about
// rows that were left out or replaced on the way (on failure: where it stopped).
struct ExchangeResult {
    Result result;
    int teams = 0;         // rows of vereine read or written
    int nationalTeams = 0; // rows of vereine_national read or written
    int players = 0;       // rows of spieler read or written
    int squadRows = 0;     // rows of vereinspieler read
    qint64 team = -1;      // the club a team file created or replaced
    bool marketCreated = false;
    // The run stopped before reading because the file reads as UTF-8; run it
    // again with FileEncoding::Utf8 or FileEncoding::Cp1252 as the user says.
    bool looksUtf8 = false;
    QList<Finding> findings;

    bool ok() const { return result.ok; }
    static ExchangeResult failure(const QString &message)
    {
        ExchangeResult r;
        r.result = Result::failure(message);
        return r;
    }
};

} // namespace zorbo
