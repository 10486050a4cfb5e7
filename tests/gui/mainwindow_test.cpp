#include "app/mainwindow.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QMenu>
#include <QSet>
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

    EXPECT_TRUE(dialogs.asked.isEmpty()) << dialogs.asked.join('\n').toStdString();
    auto *tree = child<QTreeWidget>(w, "tvdb");
    ASSERT_EQ(tree->topLevelItemCount(), 13) << "Zorbo and the twelve continents";
    ASSERT_EQ(tree->topLevelItem(0)->childCount(), 1);
    EXPECT_EQ(tree->topLevelItem(0)->child(0)->data(0, Qt::UserRole).toString(), "T0");
    EXPECT_FALSE(w.action("mnudateiitem(2)")->isEnabled()) << "Speichern waits for a team";
    EXPECT_TRUE(w.action("impanstoss4")->isEnabled()) << "our databases hold the free players' table";

    // Every entry of the menus has a name of its own, so that each is found again.
    QStringList names;
    for (const QMenu *menu : w.findChildren<QMenu *>())
        for (const QAction *a : menu->actions())
            if (!a->objectName().isEmpty())
                names << a->objectName();
    ASSERT_GT(names.size(), 30);
    EXPECT_EQ(QSet<QString>(names.begin(), names.end()).size(), names.size()) << names.join(' ').toStdString();

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
    EXPECT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(w.isVisible());
    EXPECT_NE(w.db(), nullptr);

    dialogs.answer = true;
    EXPECT_TRUE(w.close());
    EXPECT_FALSE(w.isVisible());
    EXPECT_EQ(w.db(), nullptr);
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
