#pragma once

#include "app/mainwindow.h"
#include "core/ui/dialogs.h"
#include "editor/ui/editorview.h"
#include "support/testsupport.h"

#include <QApplication>
#include <QDialog>
#include <QProgressDialog>
#include <QPushButton>
#include <QStringList>
#include <QTableView>
#include <QTimer>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QWidget>
#include <gtest/gtest.h>
#include <functional>
#include <stdexcept>

namespace zorbo::test {

// Answers message boxes without showing them and remembers what was asked.
class ScriptedDialogs : public Dialogs {
public:
    bool answer = false; // for questions
    QStringList asked;   // "title|text" of every box, in order

    bool question(QWidget *, const QString &title, const QString &text) override
    {
        asked << title + QLatin1Char('|') + text;
        return answer;
    }
    int choice = 0; // for questions with buttons of their own: the default button
    int choose(QWidget *, const QString &title, const QString &text, const QStringList &buttons) override
    {
        asked << title + QLatin1Char('|') + text + QLatin1Char('|') + buttons.join(QLatin1Char('/'));
        return choice;
    }
    int choose_nodefault = -1; // for questions without a default: -1 as if closed
    int choosenodefault(QWidget *, const QString &title, const QString &text, const QStringList &buttons) override
    {
        asked << title + QLatin1Char('|') + text + QLatin1Char('|') + buttons.join(QLatin1Char('/')) + QStringLiteral("|ohne Vorgabe");
        return choose_nodefault;
    }
    QString typed; // what the next text question answers; empty: cancelled
    QString text(QWidget *, const QString &title, const QString &label) override
    {
        asked << title + QLatin1Char('|') + label;
        return typed;
    }
    void information(QWidget *, const QString &title, const QString &text) override { asked << title + QLatin1Char('|') + text; }
    void warning(QWidget *, const QString &title, const QString &text) override { asked << title + QLatin1Char('|') + text; }
    // A run's outcome: its message, then one line per finding.
    void report(QWidget *, const QString &title, const QString &text, const QList<Finding> &findings, bool) override
    {
        asked << (QStringList{title + QLatin1Char('|') + text} + findinglines(findings)).join(QLatin1Char('\n'));
    }

    QString file;   // what the next file dialog answers; empty: cancelled
    int filter = 0; // the filter entry it answers with
    QString start;  // where the last file dialog opened
    QString openfile(QWidget *, const QString &title, const QString &from, const QStringList &, int *chosen) override
    {
        asked << title;
        start = from;
        *chosen = filter;
        return file;
    }
    QString savefile(QWidget *w, const QString &title, const QString &start, const QStringList &f, int *chosen) override
    {
        return openfile(w, title, start, f, chosen);
    }
};

// A main window on the world in its own folder, its message boxes answered
// by dialogs; opened once the folder holds what the test needs.
struct WindowTest : ::testing::Test {
    TempFolder dir;
    ScriptedDialogs dialogs;
    std::unique_ptr<MainWindow> window;
    // shown: on screen at the size the window tests click in.
    void openwindow(bool shown = false)
    {
        window = std::make_unique<MainWindow>(dir.path(), &dialogs);
        window->formload();
        if (shown) {
            window->resize(1200, 800);
            window->show();
        }
    }
};

// Clicks "Abbrechen" as soon as a run offers it (see Busy::setcanceldelay),
// in the status bar or in its own window;
// offered runs first, then.
inline void cancelWhenOffered(int tries = 100000, std::function<void()> offered = {})
{
    QTimer::singleShot(0, [tries, offered] {
        for (QWidget *w : QApplication::topLevelWidgets()) {
            // The status bar's button, or the small window's under a modal window.
            QPushButton *button = w->findChild<QPushButton *>(QStringLiteral("stbabbrechen"));
            if (auto *dialog = qobject_cast<QProgressDialog *>(w); dialog && dialog->isVisible())
                button = dialog->findChild<QPushButton *>();
            if (button && !button->isHidden()) {
                if (offered)
                    offered();
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        if (tries > 0)
            cancelWhenOffered(tries - 1, offered);
    });
}

// The tree node with the key, or null.
inline QTreeWidgetItem *node(QTreeWidget *tree, const QString &key)
{
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == key)
            return *it;
    }
    return nullptr;
}

// Clicks a node as the user would: its branch opened, then the mouse.
inline void clickNode(QTreeWidget *tree, const QString &key)
{
    QTreeWidgetItem *item = node(tree, key);
    ASSERT_NE(item, nullptr) << key.toStdString();
    for (QTreeWidgetItem *p = item->parent(); p; p = p->parent())
        p->setExpanded(true);
    tree->scrollToItem(item);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
}

// Clicks a row of the player grid flxgrdspieler as the user would.
inline void clickGridRow(QWidget &window, int row)
{
    auto *grid = window.findChild<QTableView *>(QStringLiteral("flxgrdspieler"));
    ASSERT_NE(grid, nullptr);
    const QModelIndex cell = grid->model()->index(row, 1);
    grid->scrollTo(cell);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(cell).center());
}

// Works the dialog that runs modally next (the one of that name, if given)
// as soon as it is up, then closes it if the work left it open; a step that
// fails still closes it, so that the test can't hang. The busy helper's
// "Abbrechen" window is never the dialog a step waits for.
inline void whenModal(std::function<void(QDialog *)> work, const QString &name = {}, int tries = 500)
{
    QTimer::singleShot(tries == 500 ? 0 : 10, [work, name, tries] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || qobject_cast<QProgressDialog *>(dialog) || (!name.isEmpty() && dialog->objectName() != name)) {
            if (tries > 0)
                whenModal(work, name, tries - 1);
            else
                ADD_FAILURE() << "no dialog " << name.toStdString();
            return;
        }
        work(dialog);
        if (QApplication::activeModalWidget() == dialog)
            dialog->reject();
    });
}

// With ZORBO_SCREENSHOT_DIR set, the widget's picture goes there (for the README).
inline void screenshot(QWidget *w, const QString &file)
{
    const QString shots = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR");
    if (!shots.isEmpty())
        w->grab().save(shots + QLatin1Char('/') + file);
}

// The texts of a tree's top rows in the column.
inline QStringList texts(const QTreeWidget *list, int column = 0)
{
    QStringList t;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        t << list->topLevelItem(i)->text(column);
    return t;
}

// A child widget by its name; a missing one fails the test, which ends
// there instead of crashing on the null pointer.
template <typename T>
T *child(QWidget &w, const QString &name)
{
    T *c = w.findChild<T *>(name);
    if (!c)
        throw std::runtime_error("no widget named " + name.toStdString());
    return c;
}

} // namespace zorbo::test
