#pragma once

#include "core/schema.h"
#include "core/settings.h"
#include "platform/operation.h"

#include <QStringList>

namespace zorbo {

// A program folder brought up as the editor's start-up does it: settings
// read or created, delivered folders unpacked, database opened or created,
// transfer market present.
struct World {
    Settings settings;
    OpenedDb opened;
    QStringList messages; // German notes for the user (settings, folders, database)
    bool marketCreated = false;

    Database *db() const { return opened.db.get(); }
};

World openworld(const QString &programFolder, const Progress &progress = {});

} // namespace zorbo
