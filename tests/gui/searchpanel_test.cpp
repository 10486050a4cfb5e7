// The toolbar's search field and the panel "Probleme" open what they name.
#include "app/busy.h"
#include "app/mainwindow.h"
#include "app/problemspanel.h"
#include "app/searchfield.h"
#include "core/generator.h"
#include "core/schema.h"
#include "core/ui/shell.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QProgressBar>
#include <QHeaderView>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>
#include <memory>

using namespace zorbo;

namespace {

// Österreich (1) with SK Rapid Wien (22), whose squad has Š. Müller and two
// players with the number 1.
qint64 buildWorld(const QString &folder)
{
    OpenedDb o = opendb(folder + "/zorbo.mdb");
    Database &db = *o.db;
    db.run("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT, GRAFIK_NR) VALUES (1, 'Österreich', 'Österreich', 'West-Europa', 0)");
    db.run("INSERT INTO vereine (NUMMER, NAME, NATION, GRAFIK_NR) VALUES (22, 'SK Rapid Wien', 'Österreich', 0)");
    const qint64 first = spieler20new(db, 22, "Österreich", 20);
    db.run("UPDATE spieler SET NAME = 'Müller', VORNAME = 'Š.' WHERE NUMMER = ?1", first + 5);
    db.run("UPDATE spieler SET RUECKENNUMMER = 1 WHERE NUMMER = ?1", first + 1);
    return first + 5;
}

QStringList lines(QTreeWidget *list)
{
    QStringList out;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        out << list->topLevelItem(i)->text(0);
        for (int c = 0; c < list->topLevelItem(i)->childCount(); ++c)
            out << "  " + list->topLevelItem(i)->child(c)->text(0);
    }
    return out;
}
using SearchFieldWindow = zorbo::test::WindowTest;
using ProblemsPanelWindow = zorbo::test::WindowTest;

} // namespace

TEST_F(SearchFieldWindow, TypingShowsGroupedHitsAndEnterOpensThem)
{
    const qint64 mueller = buildWorld(dir.path());
    openwindow();
    MainWindow &w = *window;
    w.show();
    auto *field = zorbo::test::child<SearchField>(w, "txtsuche");
    auto *tabs = w.findChild<QTabWidget *>("tabedit");

    // Ctrl+F puts the cursor into the field.
    QApplication::setActiveWindow(&w);
    w.findChild<QWidget *>("tvdb")->setFocus();
    QTest::keyClick(&w, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(field->hasFocus());

    const QString shot = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR");
    if (!shot.isEmpty()) {
        QTest::keyClicks(field, "r");
        // The list is a window of its own: drawn onto the main window where it stands.
        QPixmap picture = w.grab();
        QPainter painter(&picture);
        painter.drawPixmap(w.mapFromGlobal(field->popup()->pos()), field->popup()->grab());
        painter.end();
        picture.save(shot + "/search.png");
        field->clear();
    }

    QTest::keyClicks(field, "rapid");
    QTreeWidget *popup = field->popup();
    EXPECT_EQ(lines(popup), (QStringList{"Vereine", "SK Rapid Wien"}));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_FALSE(popup->isVisible());
    EXPECT_EQ(w.shell().shownkey(), "T22");
    EXPECT_EQ(tabs->currentIndex(), 0);

    // What matches is the core library's test; a player opens in his tab.
    field->clear();
    QTest::keyClicks(field, "MULLER");
    ASSERT_EQ(lines(popup), (QStringList{"Spieler", "Š. Müller"}));
    QTest::keyClick(field, Qt::Key_Enter);
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_EQ(w.findChild<QLineEdit *>("txtspielernr")->text(), QString::number(mueller));

    // A click opens the hit as Enter does; the list follows a rename.
    w.shell().run([](Database &db) {
        db.run("UPDATE vereine_national SET NAME = 'Republik Österreich' WHERE NUMMER = 1");
        return Result::success();
    });
    field->clear();
    QTest::keyClicks(field, "republik");
    ASSERT_EQ(lines(popup), (QStringList{"Länder", "Republik Österreich"}));
    const QRect rect = popup->visualItemRect(popup->topLevelItem(1));
    QTest::mouseClick(popup->viewport(), Qt::LeftButton, {}, rect.center());
    EXPECT_EQ(w.shell().shownkey(), "L1");
}

TEST_F(ProblemsPanelWindow, ListsProblemsByKindAndAClickOpensTheClub)
{
    const qint64 mueller = buildWorld(dir.path());
    openwindow();
    MainWindow &w = *window;
    w.show();
    auto *panel = zorbo::test::child<ProblemsPanel>(w, "dockprobleme");
    w.action("mnutoolitem(8)")->trigger();
    EXPECT_TRUE(panel->isVisible());

    auto *list = w.findChild<QTreeWidget *>("lstvprobleme");
    const QStringList shown = lines(list);
    EXPECT_TRUE(shown.contains("Doppelte Rückennummern (1)")) << shown.join('\n').toStdString();

    // Which problems are found is the core library's test; a click opens the club.
    QTreeWidgetItem *line = nullptr;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        if (list->topLevelItem(i)->text(0).startsWith("Doppelte"))
            line = list->topLevelItem(i)->child(0);
    ASSERT_TRUE(line);
    w.shell().select("L1");
    list->scrollToItem(line);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(line).center());
    EXPECT_EQ(w.shell().shownkey(), "T22");
    if (const QString shot = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR"); !shot.isEmpty())
        w.grab().save(shot + "/problems.png");

    // The panel follows each change.
    w.shell().run([&](Database &db) {
        db.run("UPDATE spieler SET RUECKENNUMMER = 2 WHERE NUMMER = ?1", mueller - 4);
        return Result::success();
    });
    EXPECT_FALSE(lines(list).join('\n').contains("Doppelte Rückennummern")) << lines(list).join('\n').toStdString();
}

TEST_F(ProblemsPanelWindow, TheCheckShowsProgressOnlyWhileItRunsAndThePanelsLeaveTheGridItsRows)
{
    buildWorld(dir.path());
    openwindow(true);
    auto *bar = zorbo::test::child<QProgressBar>(*window, "prostatus");
    EXPECT_FALSE(bar->isVisible()) << "no run, no bar";
    const int delay = Busy::setcanceldelay(0);
    auto barshown = std::make_shared<int>(-1);
    zorbo::test::cancelWhenOffered(1000, [bar = QPointer<QProgressBar>(bar), barshown] { *barshown = bar && bar->isVisible(); });
    window->action("mnutoolitem(8)")->trigger();
    Busy::setcanceldelay(delay);
    EXPECT_EQ(*barshown, 1) << "the check offers Abbrechen, the bar on show";
    const QStringList shown = lines(window->findChild<QTreeWidget *>("lstvprobleme"));
    EXPECT_TRUE(!shown.isEmpty() && shown.first().startsWith("Abgebrochen")) << shown.join('\n').toStdString();
    EXPECT_FALSE(bar->isVisible());

    // With both side panels open the player grid keeps eight rows.
    window->resize(1400, 900);
    window->action("mnubearbeitenitem(3)")->trigger();
    QApplication::processEvents();
    ASSERT_TRUE(window->findChild<QTreeWidget *>("lstvprobleme")->isVisible());
    auto *grid = zorbo::test::child<QTableView>(*window, "flxgrdspieler");
    EXPECT_GE(grid->viewport()->height(), 8 * grid->verticalHeader()->defaultSectionSize()) << grid->viewport()->height();
    EXPECT_LE(window->width(), 1400) << "the panels fit beside the forms";
    zorbo::test::screenshot(window.get(), "mainwindow-panels.png");
}
