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
