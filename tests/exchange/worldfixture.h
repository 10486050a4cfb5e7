#pragma once

#include "core/schema.h"
#include "support/testsupport.h"

#include <QDateTime>
#include <QStringList>
#include <gtest/gtest.h>

namespace zorbo::test {

// A fresh database in a temporary folder: schema and reference tables, no
// transfer market.
struct TestDb {
    TempFolder dir;
    std::unique_ptr<Database> db;
    TestDb()
    {
        OpenedDb opened = opendb(dir.file(QStringLiteral("zorbo.mdb")));
        db = std::move(opened.db);
    }
    Database &operator*() { return *db; }
    Database *operator->() { return db.get(); }
    QString file(const QString &name) const { return dir.file(name); }
};

inline const QDateTime &exportTime()
{
    static const QDateTime t(QDate(2026, 11, 19), QTime(6, 36, 12));
    return t;
}

// Every row of the four world tables as text, with the type of each value,
// so that Null, empty text, 6 and 6.0 all differ.
inline QString dumpWorld(Database &db)
{
    QStringList out;
    for (const char *table : {"vereine", "vereine_national", "spieler", "vereinspieler"}) {
        Statement st = db.prepare(QStringLiteral("SELECT * FROM %1 ORDER BY 1, 2").arg(QLatin1String(table)));
        while (st.step()) {
            QStringList row{QLatin1String(table)};
            for (int c = 0; c < st.columnCount(); ++c) {
                const QVariant v = st.value(c);
                row << (v.isNull() ? QStringLiteral("NULL") : QString::fromLatin1(v.typeName()) + QLatin1Char(':') + v.toString());
            }
            out << row.join(QLatin1Char('|'));
        }
    }
    return out.join(QLatin1Char('\n'));
}

// File contents without the first line (the export date).
inline QByteArray withoutDate(const QByteArray &bytes)
{
    return bytes.mid(bytes.indexOf('\n') + 1);
}

} // namespace zorbo::test
