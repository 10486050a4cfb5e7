#pragma once

#include <QString>

struct sqlite3;

namespace zorbo {

// Names of countries and clubs are the same when they differ only in case,
// for every letter and not only A to Z ("ägypten" is "Ägypten"), as the
// game's old database engine compared them. Accents and spellings still
// count ("Osterreich" is not "Österreich", "ss" is not "ß"). This is
// equality only; how names sort is a rule of its own.
bool samename(const QString &a, const QString &b);
// The form of a name that samename() compares: two names are the same
// exactly when their folded forms are equal, so it can key a hash.
QString foldname(const QString &name);

// Registers the SQL function samename(a, b) on a connection: 1 when the two
// names are the same by the rule above, 0 when not, Null when either is Null.
// Statements compare names with it, as in "WHERE samename(NATION, ?1)".
// Returns SQLite's result code.
int registernamefunctions(sqlite3 *db);

} // namespace zorbo
