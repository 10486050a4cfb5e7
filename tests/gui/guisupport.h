#pragma once

#include "core/ui/dialogs.h"
#include "editor/ui/editorview.h"

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QStringList>
#include <QTimer>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QWidget>
#include <gtest/gtest.h>
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
    void information(QWidget *, const QString &title, const QString &text) override { asked << title + QLatin1Char('|') + text; }
    void warning(QWidget *, const QString &title, const QString &text) override { asked << title + QLatin1Char('|') + text; }
    // A run's outcome: its message, then one line per finding.
    void report(QWidget *, const QString &title, const QString &text, const QList<Finding> &findings, bool) override
    {
        asked << (QStringList{title + QLatin1Char('|') + text} + findinglines(findings)).join(QLatin1Char('\n'));
    }

    QString file;   // what the next file dialog answers; empty: cancelled
    int filter = 0; // the filter entry it answers with
    QString openfile(QWidget *, const QString &title, const QString &, const QStringList &, int *chosen) override
    {
        asked << title;
        *chosen = filter;
        return file;
    }
    QString savefile(QWidget *w, const QString &title, const QString &start, const QStringList &f, int *chosen) override
    {
        return openfile(w, title, start, f, chosen);
    }
};

// Clicks "Abbrechen" as soon as a run offers it (see Busy::setcanceldelay).
inline void cancelWhenOffered(int tries = 100000)
{
    QTimer::singleShot(0, [tries] {
        for (QWidget *w : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<QProgressDialog *>(w);
            if (dialog && dialog->isVisible()) {
                QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
                return;
            }
        }
        if (tries > 0)
            cancelWhenOffered(tries - 1);
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
