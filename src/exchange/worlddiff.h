#pragma once

#include "exchange/exchangeresult.h"
#include "platform/database.h"
#include "platform/operation.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace zorbo {

// The tables that make up a world as two modders share it: what a
// comparison looks at and what a change file may carry.
const QStringList &worldtables();

// One value of a row that a change touches, in the words of the windows:
// "Name", "Heimtrikot: Hose", "Talente erlernt" with the values as shown
// (talents by name, strength in stars, colours as their text).
struct FieldChange {
    QString column; // the table's column
    QString field;  // German
    QString before;
    QString after;
};

// A row a change touches, by table and key, so that a choice made on a
// change can be taken back to the rows it stands for.
struct RowKey {
    QString table;
    qint64 key = 0;
    bool operator==(const RowKey &) const = default;
};

// One change of a world as a user reads it: a country, club or player that
// is new, changed or removed, or a player who changes his club.
struct EntityChange {
    enum Kind { Added, Changed, Removed, Moved };
    enum Entity { Country, Club, Player, FreePlayer, Other };
    Kind kind = Changed;
    Entity entity = Other;
    qint64 number = 0;
    QString name;
    QString country;   // where it is grouped: the country's name
    QString club;      // and the club's (players); empty for countries and clubs
    QString fromClub;  // squad moves: the club he leaves (empty: none)
    QString toClub;    // and the one he joins (empty: none)
    QList<FieldChange> fields; // Changed: the values that differ
    QList<RowKey> rows;        // the rows it stands for
    QString table;             // Other: the table

    // The German line: "Verein 1204 „SV Beispiel“: Name „SV Beispiel“ → „SV Beispiel 09“".
    QString text() const;
    // "neu", "geändert", "entfernt", "wechselt"
    QString kindtext() const;
};

// The German name of an entity kind as the lists show it: "Land", "Verein" …
QString entitytext(EntityChange::Entity entity);

// Counts of a list of changes, for the line above the list.
struct ChangeCounts {
    int added = 0, changed = 0, removed = 0, moved = 0;
    int total() const { return added + changed + removed + moved; }
    // "12 neu, 3 geändert, 1 entfernt, 2 Wechsel"
    QString text() const;
};
ChangeCounts countchanges(const QList<EntityChange> &changes);

// The entity-level list of a changeset of the world tables, sorted by
// country, club and number. The names come from the changeset's own values
// and, for what it doesn't hold, from the world before (schema before) and
// after (schema after), either of which may be empty when unknown ("main"
// or the name of an attached world). Throws DbError.
QList<EntityChange> summarize(Database &db, const QByteArray &changeset, const QString &before, const QString &after);

// The changeset that turns the world tables of schema from into those of
// schema to (both open on db: "main" or an attached world). Throws DbError.
QByteArray tablediff(Database &db, const QString &to, const QString &from);

// Another world open beside db as the attached schema "andere" while it
// lives; refuses (ok false, German message naming the file) a file that is
// no world of ours or the world itself.
class OtherWorld {
public:
    OtherWorld(Database &db, const QString &path);
    ~OtherWorld();
    OtherWorld(const OtherWorld &) = delete;
    OtherWorld &operator=(const OtherWorld &) = delete;
    const Result &result() const { return m_result; }
    static const QString schema;

private:
    Database &m_db;
    Result m_result;
    bool m_attached = false;
};

// The comparison of this world with another one: the changes that take this
// world to the other one.
struct WorldDiff {
    Result result;
    QByteArray changeset;
    QList<EntityChange> changes;
    ChangeCounts counts;
    QList<Finding> findings;
};

// This world (db) against the world in the file otherPath.
WorldDiff diffworlds(Database &db, const QString &otherPath);

// This world against a pair of game files: the world is copied into
// scratchPath (which the caller keeps while it needs the other side, and
// removes), the files read into the copy as the import reads them, then
// compared; the present world stays untouched. Either file may be empty
// to leave its part as it is.
WorldDiff diffgamefiles(Database &db, const QString &teamsPath, const QString &playersPath, const QString &scratchPath,
                        const Progress &progress = {});

// Takes the rows of the chosen changes from the other world, open beside db
// as OtherWorld (attached before the caller's transaction begins, as the
// engine can't let it go inside one), row by row as they are there. Runs
// inside the caller's transaction. Throws DbError.
Result takeover(Database &db, const QList<EntityChange> &chosen);

} // namespace zorbo
