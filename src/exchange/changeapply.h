#pragma once

#include "exchange/changefile.h"

#include <QHash>
#include <optional>

namespace zorbo {

// A row the file changes that this world has otherwise.
struct Conflict {
    enum Kind {
        Changed,   // changed here and in the file, differently
        Missing,   // the file changes a row that is gone here
        Deleted,   // the file removes a row that was changed here
        Taken,     // the file's new row has a number taken here
        Reference, // the row names a club, player or country that is not here
    };
    struct Value {
        QString field;
        QString before; // as the file found it
        QString here;
        QString file;   // as the file has it
    };
    Kind kind = Changed;
    RowKey row;
    QString what; // "Verein 1204 „SV Beispiel“"
    QString why;  // for references: what is missing
    QList<Value> values;

    // The key a choice is made under: "vereine/1204".
    QString id() const { return row.table + QLatin1Char('/') + QString::number(row.key); }
    QString kindtext() const;
    QString text() const;
};

enum class Choice { Mine, Theirs };

// The user's choices: per conflict (by its id), else the one for all.
struct ApplyChoices {
    std::optional<Choice> all;
    QHash<QString, Choice> each;
    std::optional<Choice> of(const Conflict &c) const
    {
        if (const auto it = each.constFind(c.id()); it != each.cend())
            return *it;
        return all;
    }
};

struct ApplyOutcome {
    Result result;
    QList<Conflict> conflicts; // found (preview) or left without a choice (apply)
    int changes = 0;           // rows the file changes
    int already = 0;           // of these, rows this world has as the file has them
    int applied = 0;           // rows changed
};

// What applying would do: the conflicts and the rows already as in the
// file. Changes nothing.
ApplyOutcome previewchanges(Database &db, const QByteArray &changeset);

// Applies the changes with the choices, inside the caller's transaction.
// A conflict without a choice refuses the whole, listing the conflicts.
ApplyOutcome applychanges(Database &db, const QByteArray &changeset, const ApplyChoices &choices);

class World;

// The change file read from path applied to the world as one step of its
// history, after a restore point of the world as it was.
ApplyOutcome applychangefile(World &world, const QString &path, const ChangeFile &file, const ApplyChoices &choices);

// The chosen changes of a comparison taken from the other world (the file
// otherPath) into the world, as one step of its history; from names the
// other side in the step's text ("andere.mdb", "1_tm.cfg/1_sp.cfg").
Result takeoverchanges(World &world, const QString &otherPath, const QList<EntityChange> &chosen, const QString &from);

} // namespace zorbo
