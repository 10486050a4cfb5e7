#pragma once

#include "core/world.h"
#include "anstoss/aetfile.h"
#include "anstoss/anstossresult.h"

#include <QSet>
#include <QVariantList>

namespace zorbo {

// Adds the file's player k (counted from 0) to the free players (a4spieler):
// name, whole first name, country and club name as the file has them,
// position, strength, games left and squad number as whole numbers, a face
// from gesichtbauen. Throws Fault for a value the row can't take. Returns
// the values that a4deleteid compares.
QVariantList savea4spieler(Database &db, const AetFile &file, int k);

// The players the free players' table holds, by the columns that make two
// rows the same to a4deleteid (name, first name, country, club, position,
// strength). A run removes duplicates first and then keeps this up to date,
// so that each new row is checked without a walk over the table.
class A4Keys {
public:
    explicit A4Keys(Database &db);
    // Removes the row just added when an older one holds the same player,
    // as a4deleteid would; true then.
    bool deletenew(Database &db, const QVariantList &values);

private:
    QSet<QString> m_keys;
};

// The players of the file (all when indexes is empty) into the free
// players, a4deleteid after each; the message is "N Spieler in Freie
// Spieler importiert!" with N the rows that stay, followed by the count of
// those dropped as duplicates (duplicatestext). Reports one step per player. Runs inside the
// caller's transaction; throws Fault, DbError or Cancelled.
// keys: those of a longer run that began with a4deleteid; without, the run
// begins with it.
AnstossResult importfreeplayers(Database &db, const AetFile &file, const QList<int> &indexes = {},
                                const Progress &progress = {}, A4Keys *keys = nullptr);

// The sentence that closes a run's message when players were dropped as
// duplicates, with a blank before it; empty for none.
QString duplicatestext(int duplicates);

// The same as one operation of its own, in one transaction: all or none.
// A run into the free players as a step of the history.
Step freeplayersstep(const QString &path);

AnstossResult runfreeplayers(Database &db, const QString &path, const QList<int> &indexes = {},
                             const Progress &progress = {}, FileEncoding encoding = FileEncoding::Detect);

} // namespace zorbo
