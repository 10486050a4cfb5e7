#pragma once

#include <QCollator>
#include <QStringView>

struct sqlite3;

namespace zorbo {

// Names sort as a German reader expects: umlauts beside their plain letters
// ("Österreich" between "Niederlande" and "Polen", "Ärmel" beside "Armel"),
// ß as ss, and case only breaks ties, so it never splits a list. Texts the
// rule holds equal but that differ in any way still get a fixed order (by
// their UTF-16 code units), so that a sort is the same on every run.
// Returns < 0, 0 or > 0.
int germancompare(QStringView a, QStringView b);

// The collator's part of germancompare as a key, for sorting many names at
// once: keys compare as the collator does; where they are equal,
// germancompare goes on to the code units.
QCollatorSortKey germansortkey(const QString &text);

// Registers the collation "deutsch" on a connection, for statements that
// sort names: "ORDER BY NAME COLLATE deutsch". Returns SQLite's result code.
int registergermanorder(sqlite3 *db);

} // namespace zorbo
