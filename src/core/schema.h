#pragma once

#include "platform/database.h"

#include <QString>
#include <QStringList>
#include <memory>

namespace zorbo {

// Marks a database file as one of ours (PRAGMA application_id).
inline constexpr int zorboApplicationId = 0x5A4F5242;
// 2: squads in kaderzeilen behind the view vereinspieler, the history in verlauf.
// 3: each step of the history carries a checksum of its changes.
// 4: the game's files as last imported or exported, in spieldateien.
inline constexpr int zorboSchemaVersion = 6;

// The continents in the order of the continent list.
const QStringList &kontinente();

// Creates all tables and views of an empty database and fills the reference
// tables, in one transaction.
void createschema(Database &db);

// Brings a world of an older version of ours up to this one, in one
// transaction. Throws DbError.
void upgradeschema(Database &db);

// Fills the e_ tables from the delivered reference data.
void fillreferencetables(Database &db);

enum class DbOpenState {
    Opened,  // one of our databases
    Created, // the file was missing or empty and is now a new world
    Foreign, // the file is no database of ours; it stays untouched
    Failed,  // the file could not be opened or created
};

struct OpenedDb {
    std::unique_ptr<Database> db; // null unless Opened or Created
    DbOpenState state = DbOpenState::Failed;
    QString message;              // German, for Foreign and Failed
};

// Whether the file is a database of ours, read from its header alone;
// when not, *why says so in German.
bool isworldfile(const QString &path, QString *why);

// Opens zorbo.mdb, creating it when missing. Never overwrites a file that
// is not one of our databases.
OpenedDb opendb(const QString &path);

} // namespace zorbo
