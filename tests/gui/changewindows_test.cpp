// "Welten vergleichen" and "Änderungen anwenden" walked as a user would:
// open, tick, take over, undo.
#include "exchange/changeapply.h"
#include "guisupport.h"
#include "support/qstringprint.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::child;
using zorbo::test::screenshot;

namespace {

struct ChangeWindows : zorbo::test::WindowTest {
    QString other;
    void SetUp() override
    {
        openwindow(true);
        db().exec("INSERT INTO vereine_national (NUMMER, NAME, NATION) VALUES (1, 'Deutschland', 'Deutschland');"
                  "INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (10, 'SV Beispiel', 'Deutschland'), (11, 'FC Köln', 'Deutschland');"
                  "INSERT INTO spieler (NUMMER, NAME, VORNAME) VALUES (7021, 'Müller', 'T.'), (7022, 'Schmidt', 'K.');"
                  "INSERT INTO kaderzeilen (verein, spieler) VALUES (10, 7021), (11, 7022)");
        other = dir.file("andere.mdb");
        db().copyto(other);
        Database o(other);
        o.exec("UPDATE vereine SET NAME = 'SV Beispiel 09' WHERE NUMMER = 10;"
               "UPDATE kaderzeilen SET verein = 10 WHERE spieler = 7022;"
               "INSERT INTO spieler (NUMMER, NAME, VORNAME) VALUES (70231, 'Neumann', 'P.');"
               "INSERT INTO kaderzeilen (verein, spieler) VALUES (11, 70231)");
    }
    Database &db() { return *window->db(); }
    QString name(qint64 club) { return db().scalar("SELECT NAME FROM vereine WHERE NUMMER = ?1", club).toString(); }
};

QTreeWidgetItem *find(QTreeWidget *tree, const QString &start)
{
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        if ((*it)->text(0).startsWith(start))
            return *it;
    return nullptr;
}

} // namespace

TEST_F(ChangeWindows, CompareTickTakeOverAndUndo)
{
    dialogs.choice = 0; // another world
    dialogs.file = other;
    bool walked = false;
    zorbo::test::whenModal(
        [&](QDialog *w) {
            EXPECT_EQ(child<QLabel>(*w, "lblanzahl")->text(), "3 Änderungen: 1 neu, 1 geändert, 0 entfernt, 1 Wechsel");
            auto *list = child<QTreeWidget>(*w, "tvvergleich");
            ASSERT_EQ(list->topLevelItemCount(), 1);
            EXPECT_EQ(list->topLevelItem(0)->text(0), "Deutschland");
            // The filter keeps what names the text.
            child<QLineEdit>(*w, "txtfilter")->setText("wechselt");
            ASSERT_NE(find(list, "Spieler 7022 wechselt von „FC Köln“ nach „SV Beispiel 09“"), nullptr);
            EXPECT_EQ(find(list, "Verein 10"), nullptr);
            child<QLineEdit>(*w, "txtfilter")->clear();
            screenshot(w, "vergleich.png");
            QTreeWidgetItem *rename = find(list, "Verein 10 „SV Beispiel“: Name");
            ASSERT_NE(rename, nullptr);
            rename->setCheckState(0, Qt::Checked);
            QTest::mouseClick(child<QPushButton>(*w, "btnuebernehmen"), Qt::LeftButton);
            EXPECT_TRUE(dialogs.asked.last().contains("1 Änderungen übernommen")) << dialogs.asked.last().toStdString();
            // What is left to take over.
            EXPECT_EQ(child<QLabel>(*w, "lblanzahl")->text(), "2 Änderungen: 1 neu, 0 geändert, 0 entfernt, 1 Wechsel");
            walked = true;
        },
        "frmvergleich");
    window->action("mnutoolitem(9)")->trigger();
    ASSERT_TRUE(walked);
    EXPECT_EQ(name(10), "SV Beispiel 09");
    EXPECT_EQ(db().scalar("SELECT verein FROM kaderzeilen WHERE spieler = 7022").toInt(), 11);
    EXPECT_TRUE(window->world()->history().last().text.contains("andere.mdb"));
    window->action("mnubearbeitenitem(0)")->trigger();
    EXPECT_EQ(name(10), "SV Beispiel");
}

TEST_F(ChangeWindows, ApplyPreviewChoosesPerConflictAndUndo)
{
    const QString file = dir.file("aenderungen.zae");
    {
        Database o(other);
        ChangeFileRead made = changesagainst(o, db().path(), "Umbenennung und Wechsel");
        ASSERT_TRUE(made.result.ok);
        ASSERT_TRUE(writechangefile(file, made.file).ok);
    }
    db().exec("UPDATE vereine SET NAME = 'Mein Beispiel' WHERE NUMMER = 10");
    dialogs.file = file;
    bool walked = false;
    zorbo::test::whenModal(
        [&](QDialog *w) {
            EXPECT_TRUE(child<QLabel>(*w, "lbldatei")->text().contains("Umbenennung und Wechsel"));
            auto *conflicts = child<QTreeWidget>(*w, "tvkonflikte");
            ASSERT_EQ(conflicts->topLevelItemCount(), 1);
            QTreeWidgetItem *c = conflicts->topLevelItem(0);
            EXPECT_EQ(c->text(0), "Verein 10 „Mein Beispiel“: hier anders geändert");
            ASSERT_EQ(c->childCount(), 1);
            EXPECT_EQ(QStringList({c->child(0)->text(1), c->child(0)->text(2), c->child(0)->text(3)}),
                      QStringList({"„SV Beispiel“", "„Mein Beispiel“", "„SV Beispiel 09“"}));
            screenshot(w, "aenderungen-anwenden.png");
            QTest::mouseClick(child<QPushButton>(*w, "btndatei"), Qt::LeftButton);
            EXPECT_EQ(c->checkState(0), Qt::Checked);
            QTest::mouseClick(child<QPushButton>(*w, "btnanwenden"), Qt::LeftButton);
            EXPECT_FALSE(w->isVisible());
            walked = true;
        },
        "frmaenderungenanwenden");
    window->action("mnudateiitem(9)")->trigger();
    ASSERT_TRUE(walked);
    EXPECT_EQ(name(10), "SV Beispiel 09");
    EXPECT_EQ(db().scalar("SELECT verein FROM kaderzeilen WHERE spieler = 7022").toInt(), 10);
    EXPECT_EQ(window->world()->history().last().text, "Änderungsdatei „aenderungen.zae“ angewendet");
    window->action("mnubearbeitenitem(0)")->trigger();
    EXPECT_EQ(name(10), "Mein Beispiel");
    EXPECT_EQ(db().scalar("SELECT verein FROM kaderzeilen WHERE spieler = 7022").toInt(), 11);

    // Given on the command line (or by the file manager), it opens the same preview.
    QString opened;
    zorbo::test::whenModal([&opened](QDialog *w) { opened = w->objectName(); });
    EXPECT_TRUE(window->shell().openpath(file));
    EXPECT_EQ(opened, "frmaenderungenanwenden");
    EXPECT_EQ(name(10), "Mein Beispiel");
}

TEST_F(ChangeWindows, StepsExportedFromTheMenuAndFromTheHistoryPanel)
{
    ASSERT_TRUE(window->world()->run([](Database &d) { return Result::success(QString::number(
                                                          d.run("UPDATE vereine SET NAME = 'Umbenannt' WHERE NUMMER = 10"))); },
                                     {}, Step("Verein umbenannt")).ok);
    const qint64 step = window->world()->history().last().id;
    const auto exported = [&](const QString &file) {
        const ChangeFileRead read = readchangefile(file);
        EXPECT_TRUE(read.result.ok) << read.result.message.toStdString();
        QStringList lines;
        for (const EntityChange &c : read.file.summary)
            lines << c.text();
        return lines;
    };
    const QStringList expected{"Verein 10 „SV Beispiel“: Name „SV Beispiel“ → „Umbenannt“"};

    dialogs.choice = 0; // from a step of the history
    dialogs.typed = QString::number(step);
    dialogs.file = dir.file("menu.zae");
    window->action("mnudateiitem(8)")->trigger();
    EXPECT_EQ(exported(dialogs.file), expected);

    // The step's own menu in the panel "Verlauf".
    window->action("mnubearbeitenitem(3)")->trigger();
    auto *list = child<QListWidget>(*window, "lstverlauf");
    QListWidgetItem *line = list->item(list->count() - 1);
    ASSERT_TRUE(line->text().contains("Verein umbenannt"));
    dialogs.file = dir.file("verlauf.zae");
    bool offered = false;
    QTimer::singleShot(0, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(menu->actions().size(), 1);
        EXPECT_EQ(menu->actions().first()->text(), "Änderungen ab hier exportieren");
        offered = true;
        menu->actions().first()->trigger();
        menu->close();
    });
    emit list->customContextMenuRequested(list->visualItemRect(line).center());
    ASSERT_TRUE(offered);
    EXPECT_EQ(exported(dialogs.file), expected);
}
