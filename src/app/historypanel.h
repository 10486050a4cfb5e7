#pragma once

#include "core/world.h"

#include <QDockWidget>
#include <functional>

class QListWidget;
class QListWidgetItem;

namespace zorbo {

class Shell;

// The dockable panel "Verlauf": one line per step of the world's history,
// oldest at the top, after a line for the state before the first kept step.
// The present position is selected and bold, undone steps are grey; a click
// on a line goes back or forward to it.
class HistoryPanel : public QDockWidget {
    Q_OBJECT

public:
    HistoryPanel(Shell &shell, QWidget *parent);

    // Reads the history and fills the list.
    void refresh();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void go(QListWidgetItem *item);

    Shell &m_shell;
    QListWidget *m_list;
    int m_present = 0; // the row of the newest step done
    bool m_stale = true;
};

// Runs a move through the history (undo, redo, a jump) under the busy
// helper with its progress; the outcome goes to the status bar, a refusal
// also into a message box with the title.
void movehistory(Shell &shell, const QString &title, const QString &busytext,
                 const std::function<Result(World &world, const Progress &progress)> &move);

// Hangs the history on the menu "Bearbeiten" and its toolbar buttons:
// undo, redo and the panel "Verlauf", which docks at the right of the main
// window, hidden until asked for; "Optionen → Wiederherstellungspunkte..."
// opens the restore points. Ctrl+Z in a text field undoes its text while it
// has some to undo, else the world's newest step.
HistoryPanel *installhistory(Shell &shell);

} // namespace zorbo
