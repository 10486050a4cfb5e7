#include "app/mainwindow.h"
#include "core/generator.h"
#include "core/history.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QDockWidget>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::child;
using zorbo::test::clickNode;
using zorbo::test::node;

namespace {

// One country with three clubs of 20 players.
void buildWorld(const QString &folder)
{
    OpenedDb o = opendb(folder + "/zorbo.mdb");
    Database &db = *o.db;
    db.run("INSERT INTO vereine_national (NUMMER, NAME, KURZNAME, NATION, KONTINENT) VALUES "
           "(10, 'Deutschland', 'GER', 'Deutschland', 'West-Europa')");
    db.run("INSERT INTO vereine (NUMMER, NAME, KURZNAME, NATION, STADT, STADION_SITZPL, STADION_STEHPL) VALUES "
           "(20, 'FC Köln', 'Köln', 'Deutschland', 'Köln', 40000, 10000), "
           "(21, 'Fortuna Düsseldorf', 'Fortuna', 'Deutschland', 'Düsseldorf', 30000, 20000), "
           "(22, 'Alemannia Aachen', 'Aachen', 'Deutschland', 'Aachen', 20000, 12000)");
    const QStringList names = {"Müller", "Schäfer", "Weiß", "Groß", "Böhm", "Jürgens", "Köhler"};
    for (int team : {20, 21, 22}) {
        const qint64 first = spieler20new(db, team, "Deutschland", 20);
        for (int i = 0; i < 20; ++i)
            db.run("UPDATE spieler SET NAME = ?2 WHERE NUMMER = ?1", first + i, names[(i + team) % names.size()]);
    }
}

class History : public zorbo::test::WindowTest {
protected:
    void SetUp() override
    {
        buildWorld(dir.path());
        openwindow(true);
        QApplication::setActiveWindow(window.get());
        tree = child<QTreeWidget>(*window, "tvdb");
    }
    QLineEdit *field(const char *name) { return child<QLineEdit>(*window, name); }
    QString clubname(int team)
    {
        return window->db()->scalar("SELECT NAME FROM vereine WHERE NUMMER = ?1", team).toString();
    }
    // Renames the club through the form, as the user does.
    void rename(int team, const QString &name)
    {
        clickNode(tree, QStringLiteral("T%1").arg(team));
        field("txtteamlang")->setText(name);
        QTest::mouseClick(child<QPushButton>(*window, "btnteamsave"), Qt::LeftButton);
    }

    QTreeWidget *tree = nullptr;
};

void clickline(QListWidget *list, int row)
{
    list->scrollToItem(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

} // namespace

TEST_F(History, CtrlZUndoesTheFieldsTextFirstThenTheTeamSaveAndCtrlYRedoesIt)
{
    QAction *undo = window->action("mnubearbeitenitem(0)");
    QAction *redo = window->action("mnubearbeitenitem(1)");
    EXPECT_FALSE(undo->isEnabled());

    rename(21, "Fortuna 95");
    ASSERT_TRUE(dialogs.asked.isEmpty()) << dialogs.asked.join('\n').toStdString();
    ASSERT_EQ(clubname(21), "Fortuna 95");
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_TRUE(window->action("undo")->isEnabled()) << "the toolbar button follows its entry";
    EXPECT_FALSE(redo->isEnabled());
    ASSERT_EQ(window->world()->history().size(), 1);

    // Typed text is the field's to undo; the world stays as it is.
    QLineEdit *name = field("txtteamlang");
    name->setFocus();
    QTest::keyClicks(name, "X");
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(name->text(), "Fortuna 95");
    EXPECT_EQ(clubname(21), "Fortuna 95");

    // The field has nothing left to undo: the key reaches the world.
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(dialogs.asked.isEmpty()) << dialogs.asked.join('\n').toStdString();
    EXPECT_EQ(clubname(21), "Fortuna Düsseldorf");
    EXPECT_EQ(node(tree, "T21")->text(0), "Fortuna Düsseldorf");
    EXPECT_EQ(field("txtteamlang")->text(), "Fortuna Düsseldorf");
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_TRUE(redo->isEnabled());

    field("txtteamlang")->setFocus();
    QTest::keyClick(window.get(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(clubname(21), "Fortuna 95");
    EXPECT_EQ(node(tree, "T21")->text(0), "Fortuna 95");
    EXPECT_EQ(field("txtteamlang")->text(), "Fortuna 95");
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(clubname(21), "Fortuna 95") << "Ctrl+Shift+Z redoes as Ctrl+Y does";
}

TEST_F(History, APanelClickGoesBackThreeStepsAndForwardAgain)
{
    const std::pair<int, const char *> saves[] = {
        {20, "1. FC Köln"}, {21, "Fortuna 95"}, {22, "Alemannia"}, {20, "Effzeh"}, {21, "F95"}};
    for (const auto &[team, name] : saves)
        rename(team, name);
    ASSERT_EQ(window->world()->history().size(), 5);

    auto *panel = child<QDockWidget>(*window, "dockverlauf");
    window->action("mnubearbeitenitem(3)")->trigger();
    ASSERT_TRUE(panel->isVisible());
    auto *list = child<QListWidget>(*panel, "lstverlauf");
    ASSERT_EQ(list->count(), 6) << "the start and five steps";
    EXPECT_EQ(list->currentRow(), 5);

    clickline(list, 2);
    EXPECT_TRUE(dialogs.asked.isEmpty()) << dialogs.asked.join('\n').toStdString();
    EXPECT_EQ(clubname(20), "1. FC Köln");
    EXPECT_EQ(clubname(21), "Fortuna 95");
    EXPECT_EQ(clubname(22), "Alemannia Aachen");
    EXPECT_EQ(node(tree, "T20")->text(0), "1. FC Köln");
    EXPECT_EQ(list->currentRow(), 2);

    const QString shot = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR");
    if (!shot.isEmpty()) {
        // The open menu is a window of its own: drawn where it opens.
        auto *menu = child<QMenu>(*window, "mnubearbeiten");
        QMenuBar *bar = window->menuBar();
        menu->popup(bar->mapToGlobal(bar->actionGeometry(menu->menuAction()).bottomLeft()));
        QPixmap picture = window->grab();
        QPainter painter(&picture);
        painter.drawPixmap(window->mapFromGlobal(menu->pos()), menu->grab());
        painter.end();
        menu->hide();
        picture.save(shot + "/verlauf.png");
    }

    clickline(list, 5);
    EXPECT_EQ(clubname(20), "Effzeh");
    EXPECT_EQ(clubname(21), "F95");
    EXPECT_EQ(clubname(22), "Alemannia");
    EXPECT_EQ(list->currentRow(), 5);
    EXPECT_FALSE(window->action("mnubearbeitenitem(1)")->isEnabled());

    clickline(list, 0);
    EXPECT_EQ(clubname(20), "FC Köln");
    EXPECT_EQ(clubname(21), "Fortuna Düsseldorf");
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_FALSE(window->action("mnubearbeitenitem(0)")->isEnabled());

    // Another program renames the club: redoing its steps is refused, in German.
    window->db()->run("UPDATE vereine SET NAME = 'Fremd' WHERE NUMMER = 21");
    ASSERT_TRUE(dialogs.asked.isEmpty()) << dialogs.asked.join('\n').toStdString();
    clickline(list, 5);
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(dialogs.asked[0].startsWith("Verlauf|")) << dialogs.asked[0].toStdString();
    EXPECT_EQ(clubname(21), "Fremd");
    EXPECT_EQ(clubname(20), "FC Köln");
    EXPECT_EQ(list->currentRow(), 0) << "the mark stays where the world stands";
}

TEST_F(History, TheRestoreWindowBringsBackTheWorldBeforeAWipeAndKeepsPointsMadeByHand)
{
    rename(20, "Neuer Name");
    dialogs.answer = true;
    window->action("mnuoptionenitem(6)")->trigger(); // "Datenbank löschen"
    ASSERT_TRUE(clubname(20).isEmpty());
    dialogs.asked.clear();
    dialogs.typed = "Mein Stand";

    QTimer::singleShot(0, window.get(), [this] {
        auto *dialog = window->findChild<QDialog *>("frmwiederherstellung");
        ASSERT_NE(dialog, nullptr);
        auto *table = child<QTableWidget>(*dialog, "lstvpunkte");
        [&] {
            const QList<RestorePoint> points = restorepoints(dir.path());
            ASSERT_EQ(table->rowCount(), points.size());
            ASSERT_GE(points.size(), 1);
            EXPECT_EQ(points[0].clubs, 3) << "the world before the wipe";
            auto *restore = child<QPushButton>(*dialog, "cmdwiederherstellen");
            EXPECT_FALSE(restore->isEnabled()) << "nothing chosen yet";
            table->selectRow(0);
            QTest::mouseClick(restore, Qt::LeftButton);
            EXPECT_EQ(table->rowCount(), points.size() + 1) << "the wiped world was kept first";

            // A point made by hand, deleted again.
            QTest::mouseClick(child<QPushButton>(*dialog, "cmdanlegen"), Qt::LeftButton);
            ASSERT_EQ(table->rowCount(), points.size() + 2);
            EXPECT_EQ(table->item(0, 1)->text(), "Mein Stand (von Hand)");
            auto *remove = child<QPushButton>(*dialog, "cmdloeschen");
            EXPECT_FALSE(remove->isEnabled()) << "nothing chosen yet";
            table->selectRow(0);
            QTest::mouseClick(remove, Qt::LeftButton);
            EXPECT_EQ(restorepoints(dir.path()).size(), points.size() + 1);
            if (const auto shot = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR"); !shot.isEmpty())
                dialog->grab().save(shot + "/frmwiederherstellung.png");
        }();
        QTest::mouseClick(child<QPushButton>(*dialog, "cmdschliessen"), Qt::LeftButton);
    });
    window->action("mnuoptionenitem(8)")->trigger();

    ASSERT_EQ(dialogs.asked.size(), 4) << dialogs.asked.join('\n').toStdString();
    EXPECT_TRUE(dialogs.asked[0].startsWith("Wiederherstellen|") && dialogs.asked[2].startsWith("Wiederherstellungspunkt anlegen|") &&
                dialogs.asked[3].startsWith("Löschen|"))
        << dialogs.asked.join('\n').toStdString();
    EXPECT_EQ(clubname(20), "Neuer Name");
    EXPECT_EQ(node(tree, "T20")->text(0), "Neuer Name");
}

TEST_F(History, AnAlteredStepIsRefusedAndTheUserMayDropTheHistoryFromIt)
{
    rename(20, "Erster");
    rename(20, "Zweiter");
    const QList<HistoryStep> steps = window->world()->history();
    ASSERT_EQ(steps.size(), 2);
    window->db()->run("UPDATE verlauf SET aenderungen = substr(aenderungen, 2) WHERE schritt = ?1", steps[1].id);
    dialogs.answer = true;
    window->action("mnubearbeitenitem(0)")->trigger();
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(dialogs.asked[0].contains(QString("Den Verlauf ab Schritt %1 löschen?").arg(steps[1].id)))
        << dialogs.asked[0].toStdString();
    EXPECT_EQ(clubname(20), "Zweiter");
    EXPECT_TRUE(window->world()->history().isEmpty()) << "the step and the older one are dropped";
}
