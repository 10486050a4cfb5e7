#include "app/busy.h"
#include "app/mainwindow.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::child;

namespace {

QStringList countryNodes(QTreeWidget *tree)
{
    QStringList names;
    for (int i = 1; i < tree->topLevelItemCount(); ++i) {
        for (int c = 0; c < tree->topLevelItem(i)->childCount(); ++c)
            names << tree->topLevelItem(i)->child(c)->text(0);
    }
    names.sort();
    return names;
}
using ExchangeMenus = zorbo::test::WindowTest;

} // namespace

TEST_F(ExchangeMenus, ConfigImportAndExportByTheChosenFilter)
{
    openwindow();
    MainWindow &w = *window;
    auto *tree = w.findChild<QTreeWidget *>("tvdb");
    ASSERT_TRUE(countryNodes(tree).isEmpty());

    dialogs.file = ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg";
    dialogs.filter = 0;
    w.action("impconfig")->trigger(); // the button runs the menu entry
    EXPECT_FALSE(countryNodes(tree).isEmpty());

    dialogs.file = ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg";
    dialogs.filter = 1;
    w.action("mnuimportitem(0)")->trigger();
    const int players = w.db()->scalar("SELECT count(*) FROM spieler").toInt();
    EXPECT_GT(players, 0);
    EXPECT_LT(players, 1700) << "the market's generated players went with the import";

    // A team file taken as players is refused whole; the world stays.
    dialogs.file = ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg";
    w.action("mnuimportitem(0)")->trigger();
    EXPECT_TRUE(dialogs.asked.last().startsWith("Import|")) << dialogs.asked.last().toStdString();
    EXPECT_EQ(w.db()->scalar("SELECT count(*) FROM spieler").toInt(), players);

    dialogs.file = dir.file("export_sp.cfg");
    dialogs.filter = 1;
    w.action("expconfig")->trigger();
    const QByteArray written = zorbo::test::readBytes(dialogs.file);
    const QByteArray original = zorbo::test::readBytes(ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg");
    ASSERT_FALSE(written.isEmpty());
    EXPECT_EQ(written.mid(written.indexOf('\n')), original.mid(original.indexOf('\n'))) << "all but the date line";

    // Cancelling runs nothing.
    const int asked = int(dialogs.asked.size());
    dialogs.file.clear();
    w.action("mnuexportitem(0)")->trigger();
    EXPECT_EQ(dialogs.asked.size(), asked + 1);

    // "Abbrechen" in the middle of an import leaves the world as it was and says so.
    const QStringList before = zorbo::test::dumpworld(*w.db());
    const int delay = Busy::setcanceldelay(0);
    zorbo::test::cancelWhenOffered();
    dialogs.file = ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg";
    dialogs.filter = 0;
    w.action("mnuimportitem(0)")->trigger();
    Busy::setcanceldelay(delay);
    EXPECT_EQ(zorbo::test::dumpworld(*w.db()), before);
    EXPECT_TRUE(child<QLabel>(w, "stbstatus(1)")->text().startsWith("Abgebrochen"))
        << child<QLabel>(w, "stbstatus(1)")->text().toStdString();
    EXPECT_TRUE(w.isEnabled());
}

TEST_F(ExchangeMenus, CrestArchiveGoesOutAndBackIn)
{
    openwindow(); // unpacks the delivered crest folder with its default list
    MainWindow &w = *window;
    dialogs.file = dir.file("wa.res");
    w.action("mnuexportitem(1)")->trigger();
    EXPECT_TRUE(dialogs.asked.last().contains("1000 Wappen")) << dialogs.asked.last().toStdString();
    ASSERT_TRUE(QFile::exists(dialogs.file));

    QFile::remove(w.settings().folder(WappenFolder) + "vereins_wappen_0.tga");
    w.action("mnuimportitem(1)")->trigger();
    EXPECT_TRUE(QFile::exists(w.settings().folder(WappenFolder) + "vereins_wappen_0.tga"));

    // A crest of the archive that the user's list lacks: the list changes only
    // when the user says so (the rule itself is the resources library's test).
    const QString list = w.settings().folder(WappenFolder) + "wa.lst";
    QByteArray shorter = zorbo::test::readBytes(list);
    shorter.truncate(shorter.indexOf("[vereins_wappen_999]"));
    ASSERT_TRUE(zorbo::test::writeBytes(list, shorter.replace("anzahl=1000", "anzahl=999")));
    dialogs.answer = false;
    w.action("mnuimportitem(1)")->trigger();
    EXPECT_TRUE(dialogs.asked.last().contains("wa.lst")) << dialogs.asked.last().toStdString();
    EXPECT_EQ(zorbo::test::readBytes(list), shorter);
    dialogs.answer = true;
    w.action("mnuimportitem(1)")->trigger();
    EXPECT_TRUE(zorbo::test::readBytes(list).contains("[vereins_wappen_999]"));
}
