// Restore points of the whole world, and worlds of the first version, whose
// squads lived in a plain table.
#include "core/world.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"
#include "tools/clubnames.h"
#include "tools/dbcare.h"

#include <QDir>
#include <QFile>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace zorbo;
using zorbo::test::dumpworld;
using zorbo::test::TempFolder;

namespace {

QStringList reasons(const QString &folder)
{
    QStringList names;
    for (const RestorePoint &p : restorepoints(folder))
        names << p.reason;
    return names;
}

} // namespace

TEST(RestorePoints, KeptBeforeBigRunsListedRestoredAndPruned)
{
    TempFolder dir;
    zorbo::test::writeBytes(dir.file("zorboeditor.ini"), "[sicherungen]\r\npunkte=3\r\n");
    std::unique_ptr<World> world = openworld(dir.path());
    ASSERT_EQ(world->settings().restorepoints, 3);
    world->run([](Database &db) { return renameclub(db, 0, "Vorher"); }, {}, Step{"Name"});
    const QStringList before = dumpworld(*world->db());

    // A file in the folder that is no restore point of ours stays.
    QDir().mkpath(restorepointfolder(dir.path()));
    zorbo::test::writeBytes(restorepointfolder(dir.path()) + "/notizen.mdb", "meins");
    ASSERT_TRUE(world->run([](Database &db) { return del_db(db); }, {}, wipestep()).ok);
    const QList<RestorePoint> points = restorepoints(dir.path());
    ASSERT_EQ(points.size(), 1);
    EXPECT_EQ(points[0].reason, "Datenbank löschen");
    EXPECT_EQ(points[0].clubs, 0); // the market alone
    EXPECT_EQ(points[0].players, 1700);
    EXPECT_GT(points[0].size, 0);
    const QStringList wiped = dumpworld(*world->db());
    ASSERT_NE(wiped, before);

    int told = 0;
    QObject::connect(world.get(), &World::changed, [&](const Change &c) { told += c.everything; });
    const Result back = world->restore(points[0].name);
    ASSERT_TRUE(back.ok) << back.message.toStdString();
    EXPECT_EQ(dumpworld(*world->db()), before);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(world->history().size(), 1) << "the history comes back with the world";
    EXPECT_EQ(reasons(dir.path()), QStringList({"Vor der Wiederherstellung", "Datenbank löschen"}));

    // The world put aside comes back in turn.
    ASSERT_TRUE(world->restore(restorepoints(dir.path()).first().name).ok);
    EXPECT_EQ(dumpworld(*world->db()), wiped);

    // A point made by hand outlives the pruning and goes only when deleted.
    ASSERT_TRUE(world->makerestorepoint("Mein Stand: gut").ok);
    EXPECT_FALSE(world->makerestorepoint("  ").ok);
    for (const char *reason : {"a", "b", "c"})
        ASSERT_TRUE(world->keeprestorepoint(reason).ok);
    world->prunerestorepoints();
    // The wiped world came back with its step, whose way back is the point
    // of before the wipe: that point stays beyond the number, and goes only
    // with the step.
    EXPECT_EQ(reasons(dir.path()), QStringList({"c", "b", "a", "Mein Stand- gut", "Datenbank löschen"}));
    const Result needed = world->removerestorepoint(points[0].name);
    EXPECT_FALSE(needed.ok);
    EXPECT_TRUE(needed.message.contains(QString("gebraucht: Schritt %1 ").arg(world->history().last().id)))
        << needed.message.toStdString();
    ASSERT_TRUE(world->drophistory().ok);
    EXPECT_EQ(reasons(dir.path()), QStringList({"c", "b", "a", "Mein Stand- gut"}));
    const RestorePoint mine = restorepoints(dir.path()).last();
    EXPECT_TRUE(mine.byhand);
    ASSERT_TRUE(world->run([](Database &db) { return renameclub(db, 0, "Danach"); }, {}, Step{"Name", "d"}).ok);
    EXPECT_EQ(reasons(dir.path()), QStringList({"d", "c", "b", "Mein Stand- gut"}));
    ASSERT_TRUE(world->removerestorepoint(mine.name).ok);
    EXPECT_FALSE(world->removerestorepoint(mine.name).ok);
    EXPECT_FALSE(world->removerestorepoint("notizen.mdb").ok);
    EXPECT_EQ(reasons(dir.path()), QStringList({"d", "c", "b"}));
    EXPECT_TRUE(QFile::exists(restorepointfolder(dir.path()) + "/notizen.mdb"));

    // Names from elsewhere are refused, and so is a file that is no world.
    for (const QString &name : {QString("../zorbo.mdb"), QString("notizen.mdb"), points[0].name})
        EXPECT_FALSE(world->restore(name).ok) << name.toStdString();
    const QString fake = restorepointfolder(dir.path()) + "/2026-01-01_10-00-00_kaputt.mdb";
    zorbo::test::writeBytes(fake, "SQLite format 3");
    const QStringList now = dumpworld(*world->db());
    EXPECT_FALSE(world->restore("2026-01-01_10-00-00_kaputt.mdb").ok);
    EXPECT_EQ(dumpworld(*world->db()), now);
}

TEST(RestorePoints, ARunIsRefusedWhenItsRestorePointCanNotBeKept)
{
    TempFolder dir;
    std::unique_ptr<World> world = openworld(dir.path());
    // A file where the folder should be.
    zorbo::test::writeBytes(restorepointfolder(dir.path()), "kein Ordner");
    const QStringList before = dumpworld(*world->db());
    const Result r = world->run([](Database &db) { return del_db(db); }, {}, wipestep());
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(r.message.contains("sicherungen")) << r.message.toStdString();
    EXPECT_EQ(dumpworld(*world->db()), before);
    EXPECT_TRUE(world->history().isEmpty());
}

TEST(RestorePoints, HalfCopiesOfKilledRunsGoAtTheNextStart)
{
    TempFolder dir;
    const QString folder = restorepointfolder(dir.path());
    QDir().mkpath(folder);
    const QStringList leftovers = {"2026-01-01_10-00-00_Import.mdb.teil", "2026-01-01_10-00-00_Import.mdb.teil-journal"};
    for (const QString &name : leftovers + QStringList{"notizen.teil", "2026-01-01_10-00-00_Alt.mdb"})
        zorbo::test::writeBytes(folder + "/" + name, "halb");
    zorbo::test::writeBytes(dir.file("zorbo_komprimiert.tmp"), "halb");
    const std::unique_ptr<World> world = openworld(dir.path());
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList({"2026-01-01_10-00-00_Alt.mdb", "notizen.teil"}));
    EXPECT_FALSE(QFile::exists(dir.file("zorbo_komprimiert.tmp")));
}

TEST(RestorePoints, AFullDiskIsToldWithTheFileAndLeavesNoHalfPoint)
{
    TempFolder dir;
    std::unique_ptr<World> world = openworld(dir.path());
    // Files may grow to 64 KiB only, less than a world: as a disk that runs full.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto oldsignal = signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 64 * 1024;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const Result made = world->makerestorepoint("Voll");
    setrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, oldsignal);
    EXPECT_FALSE(made.ok);
    EXPECT_TRUE(made.message.contains(restorepointfolder(dir.path()))) << made.message.toStdString();
    EXPECT_TRUE(QDir(restorepointfolder(dir.path())).entryList(QDir::Files).isEmpty());
}

TEST(Schema, AWorldOfTheFirstVersionKeepsItsSquadsInTheirOrder)
{
    TempFolder dir;
    {
        // Today's world taken back to the first version's squads.
        OpenedDb fresh = opendb(dir.file("zorbo.mdb"));
        fresh.db->exec("DROP VIEW spielerinvereine; DROP VIEW vereinspieler; DROP TABLE kaderzeilen; DROP TABLE verlauf;"
                       "CREATE TABLE vereinspieler (verein INTEGER, spieler INTEGER) STRICT;"
                       "CREATE INDEX vereinspieler_verein ON vereinspieler (verein);"
                       "CREATE VIEW spielerinvereine AS SELECT * FROM vereinspieler;"
                       "INSERT INTO vereinspieler VALUES (5, 9), (5, 3), (6, 3), (5, 9);"
                       "DELETE FROM vereinspieler WHERE verein = 6; PRAGMA user_version = 1;");
    }
    OpenedDb opened = opendb(dir.file("zorbo.mdb"));
    ASSERT_TRUE(opened.db) << opened.message.toStdString();
    Database &db = *opened.db;
    EXPECT_EQ(db.scalar("PRAGMA user_version").toInt(), zorboSchemaVersion);
    EXPECT_EQ(dumpworld(db, {"kaderzeilen"}), QStringList({"kaderzeilen: 1|5|9", "kaderzeilen: 2|5|3", "kaderzeilen: 4|5|9"}));

    // Readers and writers of the two columns see no key, and a squad that
    // names a player twice keeps both rows through the view.
    Statement all = db.prepare("SELECT * FROM vereinspieler");
    EXPECT_EQ(all.columnCount(), 2);
    db.exec("INSERT INTO vereinspieler VALUES (7, 1)");
    db.exec("UPDATE vereinspieler SET verein = 8 WHERE spieler = 9");
    db.exec("DELETE FROM vereinspieler WHERE spieler = 3");
    EXPECT_EQ(dumpworld(db, {"kaderzeilen"}), QStringList({"kaderzeilen: 1|8|9", "kaderzeilen: 4|8|9", "kaderzeilen: 5|7|1"}));
    EXPECT_EQ(db.scalar("SELECT count(*) FROM spielerinvereine").toInt(), 0) << "the view joins the players anew";
}

TEST(RestorePoints, OnlyARunThatCommitsAChangeKeepsOneAndFailedRunsPushOutNone)
{
    TempFolder dir;
    zorbo::test::writeBytes(dir.file("zorboeditor.ini"), "[sicherungen]\r\npunkte=3\r\n");
    std::unique_ptr<World> world = openworld(dir.path());
    for (const char *name : {"Eins", "Zwei", "Drei"})
        ASSERT_TRUE(world->run([&](Database &db) { return renameclub(db, 0, name); }, {}, Step{"Name", name}).ok);
    ASSERT_EQ(reasons(dir.path()), QStringList({"Drei", "Zwei", "Eins"}));

    // Eleven runs that fail after reading their input, one that changes
    // nothing and one whose restore point can't be kept leave the list as it was.
    const auto halfway = [](Database &db) {
        db.exec("UPDATE vereine SET NAME = 'halb' WHERE NUMMER = 0");
        return Result::failure("Die Datei fehlt.cfg fehlt.");
    };
    for (int i = 0; i < 11; ++i)
        ASSERT_FALSE(world->run(halfway, {}, Step{"Import", "Import"}).ok);
    EXPECT_TRUE(world->run([](Database &) { return Result::success(); }, {}, Step{"Nichts", "Nichts"}).ok);
    const auto broken = [](Database &db) {
        db.exec("UPDATE vereine SET NAME = 'halb' WHERE NUMMER = 0");
        db.exec("SELECT * FROM gibt_es_nicht");
        return Result::success();
    };
    EXPECT_FALSE(world->run(broken, {}, Step{"Kaputt", "Kaputt"}).ok);
    EXPECT_EQ(reasons(dir.path()), QStringList({"Drei", "Zwei", "Eins"}));
    EXPECT_EQ(world->db()->scalar("SELECT NAME FROM vereine WHERE NUMMER = 0").toString(), "Drei");

    // The point kept holds the world before the run, and the oldest goes only then.
    ASSERT_TRUE(world->run([](Database &db) { return renameclub(db, 0, "Vier"); }, {}, Step{"Name", "Vier"}).ok);
    ASSERT_EQ(reasons(dir.path()), QStringList({"Vier", "Drei", "Zwei"}));
    Database kept(restorepoints(dir.path()).first().path, Database::ReadOnly);
    EXPECT_EQ(kept.scalar("SELECT NAME FROM vereine WHERE NUMMER = 0").toString(), "Drei");
    EXPECT_EQ(kept.scalar("SELECT count(*) FROM verlauf").toInt(), 3);
}
