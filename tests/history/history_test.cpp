// Every kind of run that changes the world, undone and redone, gives back
// exactly the rows before and after it, also after the program was closed.
#include "anstoss/freeplayers.h"
#include "core/world.h"
#include "editor/teamsave.h"
#include "exchange/competitiontemplate.h"
#include "exchange/configruns.h"
#include "exchange/teamfileopen.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"
#include "tools/clubnames.h"
#include "tools/dbcare.h"
#include "tools/marketfill.h"
#include "tools/squadnumbers.h"
#include "tools/swap.h"

#include <QCryptographicHash>
#include <QFile>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::dumpworld;
using zorbo::test::TempFolder;

namespace {

// The sample world of the examples, brought in as a user would.
std::unique_ptr<World> sampleworld(const QString &folder)
{
    std::unique_ptr<World> world = openworld(folder);
    EXPECT_TRUE(world->db());
    EXPECT_TRUE(world->run([](Database &db) { return importteamsrun(db, ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg"); }).ok());
    EXPECT_TRUE(world->run([](Database &db) { return importplayersrun(db, ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg"); }).ok());
    EXPECT_TRUE(world->drophistory().ok);
    return world;
}

qint64 firstclub(Database &db)
{
    return db.scalar("SELECT min(NUMMER) FROM vereine WHERE NUMMER > 0").toLongLong();
}

qint64 player(Database &db, qint64 club, int n)
{
    return db.scalar("SELECT spieler FROM kaderzeilen WHERE verein = ?1 ORDER BY zeile LIMIT 1 OFFSET ?2", club, n).toLongLong();
}

struct Kind {
    const char *name;
    std::function<Result(Database &db)> run;
};

Result plain(const ExchangeResult &r)
{
    return r.result;
}

const Kind kinds[] = {
    {"TeamSave",
     [](Database &db) {
         TeamForm form = *readteam(db, firstclub(db), ClubMode);
         const QString old = form.name;
         form.name = "Umbenannt";
         form.stadt = "Anderswo";
         return teamsave(db, form, false, old, 0);
     }},
    {"NewClub",
     [](Database &db) {
         const QString land = db.scalar("SELECT NATION FROM vereine WHERE NUMMER = ?1", firstclub(db)).toString();
         TeamForm form = newclubform(db.scalar("SELECT max(maxnr) + 1 FROM maxteamnr").toLongLong(), land);
         form.name = "Neuer Verein";
         return teamsave(db, form, true, {}, 0);
     }},
    {"TeamFileOpened",
     [](Database &db) {
         const QString land = db.scalar("SELECT NATION FROM vereine WHERE NUMMER = ?1", firstclub(db)).toString();
         return plain(openteamnew(db, ZORBO_EXAMPLES "/beispielwelt/Fortuna Großgmain.tea", land));
     }},
    {"TeamFileOverAClub",
     [](Database &db) { return plain(openteamreplace(db, ZORBO_EXAMPLES "/beispielwelt/Fortuna Großgmain.tea", firstclub(db))); }},
    {"ConfigImport",
     [](Database &db) {
         const TempFolder dir;
         QByteArray players = zorbo::test::readBytes(ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg");
         players.replace("Lukas", "Lucas");
         zorbo::test::writeBytes(dir.file("1_sp.cfg"), players);
         return plain(importplayersrun(db, dir.file("1_sp.cfg")));
     }},
    {"Template", [](Database &db) { return plain(tempvereine(db)); }},
    {"FreePlayersAndMarketFill",
     [](Database &db) {
         const AnstossResult free = runfreeplayers(db, ZORBO_EXAMPLES "/anstoss/Bundesliga/Werder_Nordstadt.aet");
         if (!free.result.ok)
             return free.result;
         return spielera4_nach_tmarkt(db).result;
     }},
    {"Swap",
     [](Database &db) {
         const qint64 club = firstclub(db);
         return swapplayers(db, player(db, club, 0), player(db, 0, 0));
     }},
    {"SquadNumberAndName",
     [](Database &db) {
         const Result number = setsquadnumber(db, player(db, firstclub(db), 1), 77);
         return number.ok ? renameclub(db, firstclub(db), "Kurzer Name") : number;
     }},
    {"Wipe", [](Database &db) { return del_db(db); }},
};

void PrintTo(const Kind &kind, std::ostream *out)
{
    *out << kind.name;
}

class EveryRun : public testing::TestWithParam<Kind> {};

} // namespace

TEST_P(EveryRun, UndoAndRedoGiveBackTheRowsBeforeAndAfterAlsoAfterARestart)
{
    TempFolder dir;
    std::unique_ptr<World> world = sampleworld(dir.path());
    const QStringList before = dumpworld(*world->db());
    const Result done = world->run(GetParam().run, {}, Step{"Der Lauf"});
    ASSERT_TRUE(done.ok) << done.message.toStdString();
    const QStringList after = dumpworld(*world->db());
    ASSERT_NE(after, before);
    ASSERT_EQ(world->history().size(), 1);

    const Result undone = world->undo();
    ASSERT_TRUE(undone.ok) << undone.message.toStdString();
    EXPECT_EQ(dumpworld(*world->db()), before);
    ASSERT_TRUE(world->redo().ok);
    EXPECT_EQ(dumpworld(*world->db()), after);

    world.reset();
    world = openworld(dir.path());
    ASSERT_EQ(world->history().size(), 1);
    ASSERT_TRUE(world->undo().ok);
    EXPECT_EQ(dumpworld(*world->db()), before);
    EXPECT_TRUE(world->history().first().undone);
    world.reset();
    world = openworld(dir.path());
    ASSERT_TRUE(world->redo().ok);
    EXPECT_EQ(dumpworld(*world->db()), after);
}

TEST_P(EveryRun, AStepKeptByItsRestorePointGivesBackTheSameRowsAlsoAfterARestart)
{
    TempFolder dir;
    std::unique_ptr<World> world = sampleworld(dir.path());
    const QStringList before = dumpworld(*world->db());
    const Result done = world->run(GetParam().run, {}, Step{"Der Lauf", "Vor dem Lauf", true});
    ASSERT_TRUE(done.ok) << done.message.toStdString();
    const QStringList after = dumpworld(*world->db());
    ASSERT_EQ(world->history().size(), 1);
    EXPECT_EQ(world->history().first().bytes, 0) << "no changes kept until the first undo";

    // The first undo, after a restart, goes back to the restore point and
    // keeps the changes from then on; the point is no longer needed.
    world.reset();
    world = openworld(dir.path());
    const Result undone = world->undo();
    ASSERT_TRUE(undone.ok) << undone.message.toStdString();
    EXPECT_EQ(dumpworld(*world->db()), before);
    EXPECT_GT(world->history().first().bytes, 0);
    ASSERT_TRUE(world->redo().ok);
    EXPECT_EQ(dumpworld(*world->db()), after);
    EXPECT_TRUE(world->removerestorepoint(restorepoints(dir.path()).first().name).ok);

    world.reset();
    world = openworld(dir.path());
    ASSERT_TRUE(world->undo().ok);
    EXPECT_EQ(dumpworld(*world->db()), before);
    world.reset();
    world = openworld(dir.path());
    ASSERT_TRUE(world->redo().ok);
    EXPECT_EQ(dumpworld(*world->db()), after);
}

INSTANTIATE_TEST_SUITE_P(History, EveryRun, testing::ValuesIn(kinds),
                         [](const testing::TestParamInfo<Kind> &info) { return info.param.name; });

TEST(History, StepsStackUpAndANewStepDropsTheUndoneOnes)
{
    TempFolder dir;
    std::unique_ptr<World> world = sampleworld(dir.path());
    const qint64 club = firstclub(*world->db());
    QList<QStringList> states{dumpworld(*world->db())};
    for (const char *name : {"Eins", "Zwei", "Drei"}) {
        ASSERT_TRUE(world->run([&](Database &db) { return renameclub(db, club, name); }, {}, Step{name}).ok);
        states << dumpworld(*world->db());
    }
    // A run that changes nothing leaves no step; one that fails neither.
    world->run([&](Database &db) { return renameclub(db, club, "Drei"); }, {}, Step{"gleich"});
    world->run([&](Database &db) {
        db.run("UPDATE vereine SET NAME = 'nie' WHERE NUMMER = ?1", club);
        return Result::failure("nein");
    });
    ASSERT_EQ(world->history().size(), 3);
    EXPECT_EQ(world->history().last().text, "Drei");

    ASSERT_TRUE(world->undo(2).ok);
    EXPECT_EQ(dumpworld(*world->db()), states[1]);
    ASSERT_TRUE(world->gotostep(0).ok);
    EXPECT_EQ(dumpworld(*world->db()), states[0]);
    ASSERT_TRUE(world->gotostep(world->history().at(1).id).ok);
    EXPECT_EQ(dumpworld(*world->db()), states[2]);
    EXPECT_FALSE(world->undo(1).message.isEmpty());

    ASSERT_TRUE(world->run([&](Database &db) { return renameclub(db, club, "Vier"); }, {}, Step{"Vier"}).ok);
    QStringList texts;
    for (const HistoryStep &s : world->history())
        texts << s.text + (s.undone ? "*" : "");
    EXPECT_EQ(texts, QStringList({"Eins", "Vier"}));
    EXPECT_FALSE(world->redo().ok);
}

TEST(History, AnUndoOfRowsChangedSinceIsRefusedAndChangesNothing)
{
    TempFolder dir;
    std::unique_ptr<World> world = sampleworld(dir.path());
    const qint64 club = firstclub(*world->db());
    ASSERT_TRUE(world->run([&](Database &db) { return renameclub(db, club, "Erst"); }, {}, Step{"Erst"}).ok);
    ASSERT_TRUE(world->run([&](Database &db) { return setsquadnumber(db, player(db, club, 0), 5); }, {}, Step{"Nummer"}).ok);
    // Another program renames the club behind the history's back.
    world->db()->run("UPDATE vereine SET NAME = 'Fremd' WHERE NUMMER = ?1", club);
    const QStringList now = dumpworld(*world->db());

    const Result refused = world->undo(2);
    EXPECT_FALSE(refused.ok);
    EXPECT_TRUE(refused.message.contains("Erst")) << refused.message.toStdString();
    EXPECT_TRUE(refused.message.contains("vereine")) << refused.message.toStdString();
    EXPECT_EQ(dumpworld(*world->db()), now);
    EXPECT_FALSE(world->history().last().undone);
    EXPECT_TRUE(world->undo(1).ok) << "the newer step touches other rows";
}

TEST(History, AFileReadAgainLeavesNoStepAndOverAnotherWorldGivesTheSameRows)
{
    TempFolder dir;
    std::unique_ptr<World> world = sampleworld(dir.path());
    const QStringList sample = dumpworld(*world->db());
    EXPECT_TRUE(world->run([](Database &db) { return importteamsrun(db, ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg"); }).ok());
    EXPECT_TRUE(world->run([](Database &db) { return importplayersrun(db, ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg"); }).ok());
    EXPECT_TRUE(world->history().isEmpty());
    EXPECT_EQ(dumpworld(*world->db()), sample);

    // Another world first: other squads, a club named twice, players that go.
    QByteArray teams = zorbo::test::readBytes(ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg");
    const qsizetype squad = teams.indexOf("SPIELER ");
    teams.insert(teams.indexOf("\"", squad) + 1, "7,8,9,");
    teams += teams.mid(teams.indexOf("\r\n\r\nNEUES_TEAM") + 4) + "\r\n";
    zorbo::test::writeBytes(dir.file("anders_tm.cfg"), teams);
    const QByteArray players = zorbo::test::readBytes(ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg");
    const qsizetype first = players.indexOf("NEUER_SPIELER");
    zorbo::test::writeBytes(dir.file("anders_sp.cfg"), players.left(players.indexOf("NEUER_SPIELER", first + 1)));
    const Result other = world->run([&](Database &db) { return importteamsrun(db, dir.file("anders_tm.cfg")); }).result;
    ASSERT_TRUE(other.ok) << other.message.toStdString();
    ASSERT_TRUE(world->run([&](Database &db) { return importplayersrun(db, dir.file("anders_sp.cfg")); }).ok());
    ASSERT_EQ(world->db()->scalar("SELECT count(*) FROM spieler").toInt(), 1);
    EXPECT_TRUE(world->run([](Database &db) { return importteamsrun(db, ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg"); }).ok());
    EXPECT_TRUE(world->run([](Database &db) { return importplayersrun(db, ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg"); }).ok());
    EXPECT_EQ(dumpworld(*world->db()), sample);
}

TEST(History, AStepWhoseChangesWereAlteredIsRefusedNamedAndCanBeDroppedFromOn)
{
    TempFolder dir;
    std::unique_ptr<World> world = openworld(dir.path());
    for (const char *name : {"Eins", "Zwei", "Drei"})
        ASSERT_TRUE(world->run([&](Database &db) { return renameclub(db, 0, name); }, {}, Step{name}).ok);
    const QList<HistoryStep> steps = world->history();
    ASSERT_EQ(steps.size(), 3);
    Database &db = *world->db();
    const auto name = [&] { return db.scalar("SELECT NAME FROM vereine WHERE NUMMER = 0").toString(); };
    // The value an undo would write back, changed: the engine would take it.
    QByteArray changes = db.scalar("SELECT aenderungen FROM verlauf WHERE schritt = ?1", steps[1].id).toByteArray();
    db.run("UPDATE verlauf SET aenderungen = ?1 WHERE schritt = ?2", changes.replace("Eins", "Einx"), steps[1].id);
    ASSERT_TRUE(world->undo().ok);
    const QStringList now = dumpworld(db);
    const Result refused = world->undo();
    EXPECT_FALSE(refused.ok);
    EXPECT_TRUE(refused.message.contains(QString("Schritt %1 ").arg(steps[1].id)) && refused.message.contains("„Zwei“") &&
                !refused.message.contains("beschädigt"))
        << refused.message.toStdString();
    EXPECT_EQ(world->brokenstep(), steps[1].id);
    EXPECT_EQ(dumpworld(db), now);

    // Dropping from a done step takes the older ones; the undone newer one stays.
    ASSERT_TRUE(world->dropsteps(steps[1].id).ok);
    EXPECT_EQ(world->brokenstep(), 0);
    ASSERT_EQ(world->history().size(), 1);
    ASSERT_TRUE(world->redo().ok);
    EXPECT_EQ(name(), "Drei");

    // An empty step is refused, not "undone"; dropping from an undone step
    // takes the newer ones.
    ASSERT_TRUE(world->run([&](Database &db) { return renameclub(db, 0, "Vier"); }, {}, Step{"Vier"}).ok);
    const qint64 empty = world->history().last().id;
    db.run("UPDATE verlauf SET aenderungen = x'' WHERE schritt = ?1", empty);
    EXPECT_FALSE(world->undo().ok);
    EXPECT_EQ(world->brokenstep(), empty);
    EXPECT_EQ(name(), "Vier");
    db.run("UPDATE verlauf SET zurueck = 1 WHERE schritt = ?1", empty); // as a redo would meet it
    ASSERT_TRUE(world->dropsteps(empty).ok);
    ASSERT_EQ(world->history().size(), 1);
    EXPECT_EQ(world->history().first().id, steps[2].id);

    // A world of the version before keeps its steps, and they stay usable.
    ASSERT_TRUE(world->run([&](Database &db) { return renameclub(db, 0, "Fünf"); }, {}, Step{"Fünf"}).ok);
    db.exec("ALTER TABLE verlauf DROP COLUMN pruefsumme; PRAGMA user_version = 2");
    world.reset();
    world = openworld(dir.path());
    ASSERT_TRUE(world->undo().ok);
    EXPECT_EQ(world->db()->scalar("SELECT NAME FROM vereine WHERE NUMMER = 0").toString(), "Vier");
}

TEST(History, AStepWhoseRestorePointIsGoneIsRefusedAndCanBeDropped)
{
    TempFolder dir;
    std::unique_ptr<World> world = openworld(dir.path());
    ASSERT_TRUE(world->run([](Database &db) { return renameclub(db, 0, "Eins"); }, {}, Step{"Eins"}).ok);
    ASSERT_TRUE(world->run([](Database &db) { return del_db(db); }, {}, wipestep()).ok);
    const QList<RestorePoint> points = restorepoints(dir.path());
    ASSERT_EQ(points.size(), 1);
    ASSERT_TRUE(QFile::remove(points[0].path));
    const QStringList now = dumpworld(*world->db());

    const Result refused = world->undo();
    EXPECT_FALSE(refused.ok);
    const qint64 wipe = world->history().last().id;
    EXPECT_TRUE(refused.message.contains(QString("Schritt %1 des Verlaufs („Datenbank gelöscht“)").arg(wipe))
                && refused.message.contains(points[0].name) && refused.message.contains("es wurde nichts geändert"))
        << refused.message.toStdString();
    EXPECT_EQ(world->brokenstep(), wipe);
    EXPECT_EQ(dumpworld(*world->db()), now);
    EXPECT_FALSE(world->history().last().undone);
    ASSERT_TRUE(world->dropsteps(wipe).ok);
    EXPECT_TRUE(world->history().isEmpty());
    EXPECT_EQ(dumpworld(*world->db()), now);
}

TEST(History, StepsOfAWorldBeforeRestorePointStepsStillUndo)
{
    TempFolder dir;
    std::unique_ptr<World> world = openworld(dir.path());
    ASSERT_TRUE(world->run([](Database &db) { return renameclub(db, 0, "Eins"); }, {}, Step{"Eins"}).ok);
    // Such a world summed up its steps by SHA-256.
    const qint64 id = world->history().last().id;
    Statement kept = world->db()->prepare("SELECT aenderungen FROM verlauf WHERE schritt = ?1");
    kept.bind(1, id);
    ASSERT_TRUE(kept.step());
    const QByteArray sha = QCryptographicHash::hash(QByteArray::number(id) + ':' + kept.blob(0), QCryptographicHash::Sha256);
    kept.reset();
    QByteArray wrong = sha;
    wrong[5] = char(wrong[5] ^ 1);
    world->db()->run("UPDATE verlauf SET pruefsumme = ?1 WHERE schritt = ?2", wrong, id);
    world->db()->exec("ALTER TABLE verlauf DROP COLUMN punktgroesse; ALTER TABLE verlauf DROP COLUMN punkt; "
                      "PRAGMA user_version = 4");
    world.reset();
    world = openworld(dir.path());
    ASSERT_TRUE(world->db());
    EXPECT_EQ(world->db()->scalar("PRAGMA user_version").toInt(), zorboSchemaVersion);
    EXPECT_FALSE(world->undo().ok) << "a changed step is known by its old sum too";
    EXPECT_EQ(world->brokenstep(), id);
    world->db()->run("UPDATE verlauf SET pruefsumme = ?1 WHERE schritt = ?2", sha, id);
    const Result undone = world->undo();
    ASSERT_TRUE(undone.ok) << undone.message.toStdString();
    EXPECT_NE(world->db()->scalar("SELECT NAME FROM vereine WHERE NUMMER = 0").toString(), "Eins");
    ASSERT_TRUE(world->run([](Database &db) { return del_db(db); }, {}, wipestep()).ok);
    EXPECT_TRUE(world->undo().ok);
}
