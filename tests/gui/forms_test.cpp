// The forms of the main window keep the user's typing until he says what
// becomes of it, and show the world as it is after any change.
#include "app/mainwindow.h"
#include "core/generator.h"
#include "editor/playergrid.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QCloseEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::child;
using zorbo::test::clickNode;

namespace {

const QString asked = QStringLiteral("Änderungen speichern?");

// A country with its national team and two clubs of 20 players.
void buildWorld(const QString &folder)
{
    OpenedDb o = opendb(folder + "/zorbo.mdb");
    Database &db = *o.db;
    db.run("INSERT INTO vereine_national (NUMMER, NAME, KURZNAME, NATION, KONTINENT, STADT) VALUES "
           "(10, 'Deutschland', 'GER', 'Deutschland', 'West-Europa', 'Berlin')");
    db.run("INSERT INTO vereine (NUMMER, NAME, KURZNAME, NATION, STADT) VALUES "
           "(20, 'FC Köln', 'Köln', 'Deutschland', 'Köln'), (21, 'Fortuna Düsseldorf', 'Fortuna', 'Deutschland', 'Düsseldorf')");
    for (int team : {20, 21, 10}) {
        const qint64 first = spieler20new(db, team, "Deutschland", 20);
        for (int i = 0; i < 20; ++i)
            db.run("UPDATE spieler SET NAME = ?2 WHERE NUMMER = ?1", first + i, QStringLiteral("Spieler%1").arg(first + i));
    }
}

class Forms : public zorbo::test::WindowTest {
protected:
    void SetUp() override
    {
        buildWorld(dir.path());
        openwindow(true);
        QApplication::setActiveWindow(window.get());
        tree = child<QTreeWidget>(*window, "tvdb");
        tabs = child<QTabWidget>(*window, "tabedit");
    }
    QLineEdit *field(const char *name) { return child<QLineEdit>(*window, name); }
    QString db(const QString &sql) { return window->db()->scalar(sql).toString(); }
    QString shownkey() { return tree->currentItem() ? tree->currentItem()->data(0, Qt::UserRole).toString() : QString(); }
    // The questions "Änderungen speichern?" asked since the last call.
    int questions()
    {
        const int n = int(dialogs.asked.filter(asked).size());
        dialogs.asked.clear();
        return n;
    }
    void saveteam() { QTest::mouseClick(child<QPushButton>(*window, "btnteamsave"), Qt::LeftButton); }
    void saveplayer() { QTest::mouseClick(child<QPushButton>(*window, "btnspielerspeichern"), Qt::LeftButton); }

    QTreeWidget *tree = nullptr;
    QTabWidget *tabs = nullptr;
};

} // namespace

TEST_F(Forms, TypingMarksTheTabAndLeavingAsksToSaveDropOrStay)
{
    clickNode(tree, "T20");
    EXPECT_EQ(tabs->tabText(0), "Land/Verein");
    field("txtteamlang")->setText("FC Köln 1948");
    EXPECT_EQ(tabs->tabText(0), "Land/Verein *");
    field("txtteamlang")->setText("FC Köln");
    EXPECT_EQ(tabs->tabText(0), "Land/Verein") << "typed back to what is stored";

    field("txtteamlang")->setText("FC Köln 1948");
    dialogs.choice = 2; // Abbrechen
    clickNode(tree, "T21");
    ASSERT_EQ(questions(), 1);
    EXPECT_EQ(shownkey(), "T20") << "the tree goes back to the club on show";
    EXPECT_EQ(field("txtteamlang")->text(), "FC Köln 1948");

    dialogs.choice = 1; // Verwerfen
    clickNode(tree, "T21");
    EXPECT_EQ(questions(), 1);
    EXPECT_EQ(field("txtteamlang")->text(), "Fortuna Düsseldorf");
    EXPECT_EQ(tabs->tabText(0), "Land/Verein");
    EXPECT_EQ(db("SELECT NAME FROM vereine WHERE NUMMER = 20"), "FC Köln");

    // A grid click leaves only the player tab; Speichern writes it first.
    zorbo::test::clickGridRow(*window, 0);
    const QString first = field("txtspielernr")->text();
    field("txtspielername")->setText("Neumann");
    EXPECT_EQ(tabs->tabText(1), "Spieler *");
    dialogs.choice = 0; // Speichern
    zorbo::test::clickGridRow(*window, 1);
    EXPECT_EQ(questions(), 1);
    EXPECT_EQ(db("SELECT NAME FROM spieler WHERE NUMMER = " + first), "Neumann");
    EXPECT_NE(field("txtspielernr")->text(), first);
    EXPECT_EQ(tabs->tabText(1), "Spieler");

    // A save that is refused keeps the form and the tree where they are.
    clickNode(tree, "T20");
    field("txtsitz")->setText("viele");
    clickNode(tree, "T21");
    EXPECT_EQ(shownkey(), "T20");
    EXPECT_EQ(field("txtsitz")->text(), "viele");
    EXPECT_EQ(dialogs.asked.size(), 2) << dialogs.asked.join('\n').toStdString(); // the question and the refusal
}

TEST_F(Forms, UndoMenuRunsAndClosingAskWhileAFormIsModified)
{
    clickNode(tree, "T21");
    field("txtstadt")->setText("Benrath");
    saveteam();
    ASSERT_EQ(db("SELECT STADT FROM vereine WHERE NUMMER = 21"), "Benrath");
    field("txtteamlang")->setText("Fortuna 95");

    dialogs.choice = 2;
    window->action("undo")->trigger();
    EXPECT_EQ(questions(), 1);
    EXPECT_EQ(db("SELECT STADT FROM vereine WHERE NUMMER = 21"), "Benrath") << "Abbrechen undoes nothing";
    EXPECT_EQ(field("txtteamlang")->text(), "Fortuna 95");

    // A run from a menu asks before it starts; Abbrechen leaves it unstarted.
    window->action("mnuoptionenitem(6)")->trigger();
    EXPECT_EQ(questions(), 1) << "nothing but the question, the wipe's own question never came";
    EXPECT_EQ(db("SELECT count(*) FROM vereine WHERE NUMMER = 21"), "1");

    // Closing the window asks, and Abbrechen keeps it open.
    QCloseEvent close;
    QApplication::sendEvent(window.get(), &close);
    EXPECT_FALSE(close.isAccepted());
    EXPECT_EQ(questions(), 1);

    dialogs.choice = 1;
    window->action("undo")->trigger();
    EXPECT_EQ(questions(), 1);
    EXPECT_EQ(db("SELECT STADT FROM vereine WHERE NUMMER = 21"), "Düsseldorf");
    EXPECT_EQ(field("txtstadt")->text(), "Düsseldorf");
    EXPECT_EQ(field("txtteamlang")->text(), "Fortuna Düsseldorf");
    EXPECT_EQ(tabs->tabText(0), "Land/Verein");

    // Speichern saves the form and stops there: the redo would drop that save.
    field("txtteamlang")->setText("Fortuna 95");
    dialogs.choice = 0;
    window->action("redo")->trigger();
    EXPECT_EQ(questions(), 1);
    EXPECT_EQ(db("SELECT NAME FROM vereine WHERE NUMMER = 21"), "Fortuna 95");
    EXPECT_EQ(db("SELECT STADT FROM vereine WHERE NUMMER = 21"), "Düsseldorf");
}

TEST_F(Forms, PlayerTabAndNationalTeamFollowUndoAndTheWipe)
{
    clickNode(tree, "L10");
    field("txtstadt")->setText("Bonn");
    saveteam();
    ASSERT_EQ(db("SELECT STADT FROM vereine_national WHERE NUMMER = 10"), "Bonn");
    zorbo::test::clickGridRow(*window, 2);
    const QString nr = field("txtspielernr")->text();
    const QString before = field("txtspielername")->text();
    field("txtspielername")->setText("Neumann");
    saveplayer();
    ASSERT_EQ(db("SELECT NAME FROM spieler WHERE NUMMER = " + nr), "Neumann");

    window->action("undo")->trigger();
    EXPECT_EQ(questions(), 0);
    EXPECT_EQ(field("txtspielernr")->text(), nr);
    EXPECT_EQ(field("txtspielername")->text(), before);
    EXPECT_TRUE(field("txtspielername")->isEnabled()) << "the player stays on show";
    window->action("undo")->trigger();
    EXPECT_EQ(field("txtstadt")->text(), "Berlin");

    // A change elsewhere leaves typing in the player tab as it is.
    field("txtspielername")->setText("Neumann");
    window->world()->run([](Database &db) {
        db.run("UPDATE vereine SET STADT = 'Porz' WHERE NUMMER = 20");
        return Result::success();
    });
    EXPECT_EQ(field("txtspielername")->text(), "Neumann");
    field("txtspielername")->setText(before);

    dialogs.answer = true;
    window->action("mnuoptionenitem(6)")->trigger();
    ASSERT_EQ(db("SELECT count(*) FROM vereine_national"), "0");
    EXPECT_EQ(field("txtstadt")->text(), "");
    EXPECT_EQ(field("txtteamlang")->text(), "");
    EXPECT_EQ(field("txtspielername")->text(), "");
    EXPECT_EQ(field("txtspielernr")->text(), "");
}

TEST_F(Forms, SpeichernOfAFormWhoseRowAChangeRemovedSaysWhyAndKeepsTheTyping)
{
    clickNode(tree, "T21");
    field("txtteamlang")->setText("Fortuna 95");
    window->world()->run([](Database &db) {
        db.run("DELETE FROM vereine WHERE NUMMER = 21");
        return Result::success();
    });
    ASSERT_EQ(field("txtteamlang")->text(), "Fortuna 95");
    dialogs.asked.clear();
    dialogs.choice = 0; // Speichern
    clickNode(tree, "T20");
    ASSERT_EQ(dialogs.asked.size(), 2) << dialogs.asked.join('\n').toStdString();
    EXPECT_TRUE(dialogs.asked[1].contains("„Fortuna 95“ lässt sich nicht speichern")) << dialogs.asked[1].toStdString();
    EXPECT_TRUE(dialogs.asked[1].contains("Tabelle vereine")) << dialogs.asked[1].toStdString();
    EXPECT_EQ(field("txtteamlang")->text(), "Fortuna 95");
    EXPECT_EQ(db("SELECT count(*) FROM vereine WHERE NUMMER = 21"), "0");

    // The same for a player whose row a change took away.
    dialogs.choice = 1; // Verwerfen
    clickNode(tree, "T20");
    zorbo::test::clickGridRow(*window, 0);
    const QString gone = field("txtspielernr")->text();
    field("txtspielername")->setText("Neumann");
    // Numbers begin at 0, as the market's first player in every new world.
    ASSERT_EQ(gone, "0");
    ASSERT_EQ(tabs->tabText(1), "Spieler *");
    window->world()->run([&](Database &db) {
        db.run("DELETE FROM spieler WHERE NUMMER = ?1", gone.toLongLong());
        return Result::success();
    });
    ASSERT_EQ(field("txtspielername")->text(), "Neumann");
    dialogs.asked.clear();
    child<QPushButton>(*window, "btnspielerspeichern")->click();
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(dialogs.asked[0].contains("Tabelle spieler")) << dialogs.asked[0].toStdString();
    EXPECT_EQ(field("txtspielername")->text(), "Neumann");
    EXPECT_EQ(db("SELECT count(*) FROM spieler WHERE NUMMER = " + gone), "0");
}
