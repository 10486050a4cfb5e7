// "Datei → Zuletzt geöffnet" brings imported files back through the import
// they came by, after the question about typing not saved yet.
#include "app/mainwindow.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::child;

namespace {

struct RecentFiles : zorbo::test::WindowTest {
    QMenu *menu() { return child<QMenu>(*window, "mnuzuletzt"); }
    QStringList shown()
    {
        emit menu()->aboutToShow();
        QStringList texts;
        for (QAction *a : menu()->actions())
            texts << a->text();
        return texts;
    }
    void import(const char *entry, const QString &file, int filter = 0)
    {
        dialogs.file = file;
        dialogs.filter = filter;
        window->action(entry)->trigger();
    }
    QString db(const QString &sql) { return window->db()->scalar(sql).toString(); }
};

} // namespace

TEST_F(RecentFiles, ImportsComeBackInTheFormatTheyCameIn)
{
    openwindow(true);
    // Names that don't tell the format: the filter chosen decides.
    const QString teams = dir.file("welt.cfg");
    const QString players = dir.file("leute.cfg");
    ASSERT_TRUE(QFile::copy(ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg", teams));
    ASSERT_TRUE(QFile::copy(ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg", players));
    import("mnuimportitem(0)", teams, 0);
    import("mnuimportitem(0)", players, 1);
    import("mnuexportitem(1)", dir.file("wa.res"));
    import("mnuimportitem(1)", dir.file("wa.res"));
    const QStringList expected = {"&1 wa.res (Import Wappen)", "&2 leute.cfg (Import Spieler)", "&3 welt.cfg (Import Vereine)"};
    EXPECT_EQ(shown(), expected);

    // The list lives in the settings file.
    window.reset();
    openwindow(true);
    QApplication::setActiveWindow(window.get());
    ASSERT_EQ(shown(), expected);

    const QString club = db("SELECT min(NUMMER) FROM vereine");
    const QString player = db("SELECT min(NUMMER) FROM spieler");
    const QString clubname = db("SELECT NAME FROM vereine WHERE NUMMER = " + club);
    const QString playername = db("SELECT NAME FROM spieler WHERE NUMMER = " + player);
    window->db()->exec("UPDATE vereine SET NAME = 'Umbenannt' WHERE NUMMER = " + club);
    window->db()->exec("UPDATE spieler SET NAME = 'Umbenannt' WHERE NUMMER = " + player);
    const QString crest = window->settings().folder(WappenFolder) + "vereins_wappen_1.tga";
    ASSERT_TRUE(QFile::remove(crest));

    // Typing not saved yet: Abbrechen imports nothing and keeps the typing.
    zorbo::test::clickNode(child<QTreeWidget>(*window, "tvdb"), "T" + club);
    auto *name = child<QLineEdit>(*window, "txtteamlang");
    name->setText("Getippt");
    dialogs.asked.clear();
    dialogs.choice = 2;
    menu()->actions().at(2)->trigger();
    EXPECT_EQ(dialogs.asked.filter("Änderungen speichern?").size(), 1) << dialogs.asked.join('\n').toStdString();
    EXPECT_EQ(db("SELECT NAME FROM vereine WHERE NUMMER = " + club), "Umbenannt");
    EXPECT_EQ(name->text(), "Getippt");

    // Verwerfen: the teams come in again from welt.cfg.
    dialogs.choice = 1;
    menu()->actions().at(2)->trigger();
    EXPECT_EQ(db("SELECT NAME FROM vereine WHERE NUMMER = " + club), clubname);
    EXPECT_EQ(db("SELECT NAME FROM spieler WHERE NUMMER = " + player), "Umbenannt") << "the players' file is not read";

    // leute.cfg comes in as players, wa.res as the crests.
    emit menu()->aboutToShow();
    menu()->actions().at(2)->trigger();
    EXPECT_EQ(db("SELECT NAME FROM spieler WHERE NUMMER = " + player), playername);
    EXPECT_TRUE(dialogs.asked.last().startsWith("Import|")) << dialogs.asked.last().toStdString();
    EXPECT_FALSE(QFile::exists(crest));
    emit menu()->aboutToShow();
    menu()->actions().at(2)->trigger();
    EXPECT_TRUE(QFile::exists(crest));
    EXPECT_TRUE(dialogs.asked.last().startsWith("Wappen|")) << dialogs.asked.last().toStdString();
    EXPECT_EQ(shown(), expected) << "each choice went to the top, so the three came round in their order";
    zorbo::test::screenshot(window.get(), "zuletzt.png");
}
