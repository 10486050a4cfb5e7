#pragma once

#include "platform/database.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace zorbo {

// Records the rows changed on the database's main file while it lives, as
// SQLite's session extension does: for every table with a primary key but
// those left out, each changed row once, with its values before and after.
class ChangeRecorder {
public:
    ChangeRecorder(Database &db, QStringList leftOut);
    ~ChangeRecorder();
    ChangeRecorder(const ChangeRecorder &) = delete;
    ChangeRecorder &operator=(const ChangeRecorder &) = delete;

    // What changed so far, as a changeset; empty when no row differs from
    // what it was. Throws DbError.
    QByteArray changeset();

private:
    static int keep(void *self, const char *table);

    struct Session;
    Session *m_session = nullptr;
    QStringList m_leftOut;
};

// Applies a changeset to the database, or its inverse when inverse is set
// (undoing it). A row that is not as the changeset expects it stops the
// whole: nothing is applied, and the answer says which row. Throws DbError
// for a failure of the engine.
std::optional<QString> applychangeset(Database &db, const QByteArray &changeset, bool inverse);

// The changeset that turns the tables of the attached database from into
// those of main: every table of main with a primary key but those left out,
// compared row by row. *differing names the tables in which a row differs.
// Throws DbError, also when a table is not of the same form in both.
QByteArray diffchangeset(Database &db, const QString &from, const QStringList &leftOut, QStringList *differing);

} // namespace zorbo
