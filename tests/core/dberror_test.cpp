// What the user reads about a failing database is German, without the
// engine's English words and without the statement.
#include "core/gamedb.h"
#include "core/schema.h"
#include "platform/fileerror.h"
#include "support/testsupport.h"

#include <QFile>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace zorbo;
using zorbo::test::NewWorld;
using zorbo::test::TempFolder;

namespace {

// Runs what and returns the message of the DbError it throws.
template <typename F>
QString failure(F what)
{
    try {
        what();
    } catch (const DbError &e) {
        return e.text();
    }
    return QStringLiteral("(kein Fehler)");
}

void expectGerman(const QString &message, const char *words)
{
    EXPECT_TRUE(message.contains(QString::fromUtf8(words))) << message.toStdString();
    for (const char *english : {"database", "constraint", "failed", "locked", "disk", "malformed", "unable", "syntax",
                                "INSERT", "SELECT", "UPDATE", "vereine"})
        EXPECT_FALSE(message.contains(QLatin1String(english), Qt::CaseInsensitive))
            << english << " in " << message.toStdString();
}

} // namespace

TEST(DatabaseErrors, EngineFailuresAreToldInGermanWithoutTheStatement)
{
    NewWorld w;
    Database &db = w.db();
    const auto insertClub = [&db] { db.run("INSERT INTO vereine (NUMMER, NAME) VALUES (7, 'Blau-Weiß')"); };

    // Another program holds the file.
    {
        Database other(db.path());
        other.exec("BEGIN EXCLUSIVE");
        sqlite3_busy_timeout(db.handle(), 0);
        expectGerman(failure(insertClub), "von einem anderen Programm benutzt");
        other.exec("ROLLBACK");
    }
    insertClub();
    expectGerman(failure(insertClub), "besteht schon");
    expectGerman(failure([&db] { db.run("INSERT INTO vereine (NUMMER, STADION_SITZPL) VALUES (8, 'viele')"); }),
                 "Zahlenfeld");
    expectGerman(failure([&db] { db.prepare("SELEC NAME FROM vereine"); }), "Datenbank");

    sqlite3_limit(db.handle(), SQLITE_LIMIT_LENGTH, 1000);
    expectGerman(failure([&db] { db.run("UPDATE vereine SET NAME = ?1", QString(2000, 'x')); }), "zu groß");
    sqlite3_limit(db.handle(), SQLITE_LIMIT_LENGTH, 1000000000);

    db.exec("PRAGMA query_only = 1");
    expectGerman(failure(insertClub), "schreibgeschützt");
    db.exec("PRAGMA query_only = 0");

    const qint64 pages = db.scalar("PRAGMA page_count").toLongLong();
    db.exec(QStringLiteral("PRAGMA max_page_count = %1").arg(pages));
    const QString full = failure([&db] { db.run("UPDATE vereine SET NAME = ?1", QString(100000, 'x')); });
    expectGerman(full, "Der Datenträger ist voll");
    EXPECT_TRUE(full.contains(db.path())) << "names the file: " << full.toStdString();

    expectGerman(failure([&w] { Database(w.dir.file("fehlt/zorbo.mdb")); }), "lässt sich nicht öffnen");

    // A table or column that is missing is named.
    db.exec("DROP TABLE verlauf");
    EXPECT_EQ(failure([&db] { db.run("DELETE FROM verlauf WHERE schritt > 3"); }),
              "Die Datenbank hat nicht den erwarteten Aufbau: die Tabelle verlauf fehlt.");
    EXPECT_EQ(failure([&db] { db.run("INSERT INTO spieler (NUMMER, GEBURTSTAG) VALUES (1, 2)"); }),
              "Die Datenbank hat nicht den erwarteten Aufbau: die Spalte GEBURTSTAG fehlt.");
}

TEST(DatabaseErrors, DamagedPagesAdviseARestorePoint)
{
    NewWorld w;
    w.db().exec("CREATE TABLE viel (t TEXT)");
    w.db().run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) "
               "INSERT INTO viel SELECT printf('%0500d', i) FROM n");
    const QString path = w.db().path();
    w.opened = {};
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    const qint64 size = f.size();
    ASSERT_GT(size, 40 * 4096);
    ASSERT_TRUE(f.seek(size - 30 * 4096));
    f.write(QByteArray(20 * 4096, '\xA5'));
    f.close();

    OpenedDb again = opendb(path);
    ASSERT_NE(again.db, nullptr) << again.message.toStdString();
    try {
        tablecounts(*again.db);
        ADD_FAILURE() << "kein Fehler";
    } catch (const DbError &e) {
        expectGerman(e.text(), "beschädigt");
        EXPECT_TRUE(e.text().contains("»sicherungen«"));
        EXPECT_TRUE(e.damaged());
        // The engine's words stay for developers.
        EXPECT_TRUE(e.detail().contains("malformed")) << e.detail().toStdString();
        EXPECT_TRUE(e.detail().contains("SELECT count(*)"));
    }
}

TEST(FileErrors, SystemFailuresAreToldInGerman)
{
    QFile full("/dev/full");
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_EQ(full.write("Zorbo"), -1);
    EXPECT_EQ(fileerrortext(full), "Der Datenträger ist voll.") << full.errorString().toStdString();

    TempFolder dir;
    QFile missing(dir.file("fehlt/1_tm.cfg"));
    EXPECT_FALSE(missing.open(QIODevice::ReadOnly));
    EXPECT_EQ(fileerrortext(missing), "Die Datei oder ihr Ordner fehlt.");
    QFile folder(dir.path());
    EXPECT_FALSE(folder.open(QIODevice::WriteOnly));
    EXPECT_EQ(fileerrortext(folder), "Der Name gehört zu einem Ordner, nicht zu einer Datei.");
}
