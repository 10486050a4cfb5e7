#pragma once

#include "platform/operation.h"

#include <QString>
#include <QStringList>

class QWidget;

namespace zorbo {

// Message boxes go through this, so that tests can answer them.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    // A Yes/No question with No as the default button; true on Yes.
    virtual bool question(QWidget *parent, const QString &title, const QString &text);
    // A question with buttons of its own, the first the default, the last
    // the one Escape presses; the index of the button chosen, -1 when the
    // box is closed otherwise.
    virtual int choose(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons);
    // The same with no button on Enter, for what can't be undone: the user
    // must pick one; Escape presses the last.
    virtual int choosenodefault(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons);
    // A line of text the user types, label saying what for; empty when he
    // cancels.
    virtual QString text(QWidget *parent, const QString &title, const QString &label);
    virtual void information(QWidget *parent, const QString &title, const QString &text);
    virtual void warning(QWidget *parent, const QString &title, const QString &text);
    // The outcome of a run: its message, and all its findings in a list the
    // user can scroll and copy; a plain message box when there are none.
    virtual void report(QWidget *parent, const QString &title, const QString &text, const QList<Finding> &findings,
                        bool failed);
    // A file to open or to save; empty when the user cancels. filters are
    // entries such as "Zorbo Vereine (1_tm.cfg) (*.cfg)"; *filter holds the
    // entry chosen.
    virtual QString openfile(QWidget *parent, const QString &title, const QString &start, const QStringList &filters,
                             int *filter);
    virtual QString savefile(QWidget *parent, const QString &title, const QString &start, const QStringList &filters,
                             int *filter);
};

} // namespace zorbo
