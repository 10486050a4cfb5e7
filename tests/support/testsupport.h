#pragma once

#include "core/schema.h"
#include "core/teamtree.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace zorbo::test {

// Folder of the test data under tests/data.
QString dataPath(const QString &relative);

// Whole contents of a file; empty when it cannot be read.
QByteArray readBytes(const QString &path);
bool writeBytes(const QString &path, const QByteArray &bytes);

// Makes every complaint of QAbstractItemModelTester (used in its Warning
// mode) a failure of the running test; other messages go on as before.
void failOnModelTesterWarnings();

// A temporary folder that lives as long as the object.
class TempFolder {
public:
    TempFolder();
    QString path() const { return m_dir.path(); }
    QString file(const QString &name) const { return m_dir.filePath(name); }

private:
    QTemporaryDir m_dir;
};

// A fresh world in a temporary folder: schema and reference tables, no
// teams and no transfer market. The one builder every suite starts from.
struct NewWorld {
    TempFolder dir;
    OpenedDb opened = opendb(dir.file("zorbo.mdb"));
    Database &db() { return *opened.db; }
    Database &operator*() { return *opened.db; }
    Database *operator->() { return opened.db.get(); }
    QString file(const QString &name) const { return dir.file(name); }
};

// Every row of every table of the world (or of the tables named; the
// history is left out), each value quoted by
// SQLite, so that a number turned into text or a Null into an empty text
// counts as a change. Rows in the order they were written, or, byKey, by
// their first two columns, for worlds written in another order.
QStringList dumpworld(Database &db, const QStringList &tables = {}, bool byKey = false);

// Keys of the tree's nodes directly under parent, in tree order.
QStringList keysUnder(const TeamTree &tree, const QString &parent);

} // namespace zorbo::test
