#include "app/mainwindow.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QMenu>
#include <QProgressBar>
#include <QTabWidget>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::ScriptedDialogs;
using zorbo::test::child;
using zorbo::test::TempFolder;

TEST(MainWindow, FreshFolderOpensWithContinentsAndMarket)
{
    TempFolder dir;
    ScriptedDialogs dialogs;
    MainWindow w(dir.path(), &dialogs);
    w.formload();
    w.show();

    EXPECT_EQ(w.windowTitle(), "Zorbo Editor 2.0.0");
    EXPECT_TRUE(dialogs.asked.isEmpty()) << dialogs.asked.join('\n').toStdString();
    auto *tree = child<QTreeWidget>(w, "tvdb");
    ASSERT_EQ(tree->topLevelItemCount(), 13);
    QTreeWidgetItem *root = tree->topLevelItem(0);
    EXPECT_EQ(root->text(0), "Zorbo");
    ASSERT_EQ(root->childCount(), 1);
    EXPECT_EQ(root->child(0)->text(0), "TRANSFERMARKT");
    EXPECT_EQ(root->child(0)->data(0, Qt::UserRole).toString(), "T0");
    EXPECT_EQ(tree->topLevelItem(1)->text(0), "Asien");
    EXPECT_EQ(tree->topLevelItem(12)->text(0), "West-Europa");

    auto *tabs = child<QTabWidget>(w, "tabedit");
    EXPECT_EQ(tabs->tabText(0), "Land/Verein");
    EXPECT_EQ(tabs->tabText(1), "Spieler");
    EXPECT_EQ(child<QProgressBar>(w, "prostatus")->value(), 100);
    EXPECT_NE(w.findChild<QWidget *>("flxgrdspieler"), nullptr);
    EXPECT_FALSE(w.action("mnudateiitem(2)")->isEnabled()) << "Speichern waits for a team";
    EXPECT_FALSE(w.action("mnuoptionenitem(4)")->isVisible());
    EXPECT_EQ(w.action("mnudateiitem(7)")->shortcut(), QKeySequence("Ctrl+Q"));
    EXPECT_TRUE(w.action("impanstoss4")->isEnabled()) << "our databases hold the free players' table";
    EXPECT_TRUE(w.action("trikotoriginal")->isChecked());
    EXPECT_FALSE(w.action("trikotzorbode")->isChecked());

    const QString shot = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR");
    if (!shot.isEmpty()) {
        tree->topLevelItem(0)->setExpanded(true);
        w.resize(1100, 720);
        w.grab().save(shot + "/mainwindow.png");
    }
}

TEST(MainWindow, CloseAsksAndNoKeepsEverythingOpen)
{
    TempFolder dir;
    ScriptedDialogs dialogs;
    MainWindow w(dir.path(), &dialogs);
    w.formload();
    w.show();

    dialogs.answer = false;
    w.action("mnudateiitem(7)")->trigger();
    EXPECT_EQ(dialogs.asked, QStringList({"Programmende|Programm beenden"}));
    EXPECT_TRUE(w.isVisible());
    EXPECT_NE(w.db(), nullptr);

    dialogs.answer = true;
    EXPECT_TRUE(w.close());
    EXPECT_FALSE(w.isVisible());
    EXPECT_EQ(w.db(), nullptr);
}

TEST(MainWindow, KitSetFromSettingsIsMarkedAndWrittenBack)
{
    TempFolder dir;
    zorbo::test::writeBytes(dir.file("zorboeditor.ini"), "[trikot]\r\nsatz=1\r\n");
    ScriptedDialogs dialogs;
    MainWindow w(dir.path(), &dialogs);
    w.formload();
    EXPECT_TRUE(w.action("mnuoptionenitem(1)")->isChecked());
    EXPECT_TRUE(w.action("trikotzorbode")->isChecked());
    EXPECT_FALSE(w.action("trikotoriginal")->isChecked());

    w.action("trikotoriginal")->trigger(); // the button runs the menu entry's handler
    EXPECT_TRUE(w.action("mnuoptionenitem(0)")->isChecked());
    EXPECT_EQ(loadsettings(dir.path()).trikotsatz, 0);
}

TEST(MainWindow, ForeignDatabaseIsReportedAndLeftAlone)
{
    TempFolder dir;
    const QByteArray old("Standard Jet DB, not ours");
    zorbo::test::writeBytes(dir.file("zorbo.mdb"), old);
    ScriptedDialogs dialogs;
    MainWindow w(dir.path(), &dialogs);
    w.formload();
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(dialogs.asked[0].contains("keine Datenbank des Zorbo Editors"));
    EXPECT_EQ(w.db(), nullptr);
    EXPECT_EQ(w.findChild<QTreeWidget *>("tvdb")->topLevelItemCount(), 13);
    EXPECT_EQ(w.findChild<QTreeWidget *>("tvdb")->topLevelItem(0)->childCount(), 0);
    EXPECT_EQ(zorbo::test::readBytes(dir.file("zorbo.mdb")), old);
}
