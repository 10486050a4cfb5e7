#pragma once

#include "core/problems.h"

#include <QDockWidget>

class QTreeWidget;
class QTreeWidgetItem;

namespace zorbo {

class Shell;

// The dockable panel "Probleme": what the game or the editor would stumble
// over, one line each, grouped by kind under a heading with its count. A
// click on a line opens the club, country or player it names. The list is
// checked anew after each change while the panel is open, and when it opens.
class ProblemsPanel : public QDockWidget {
    Q_OBJECT

public:
    ProblemsPanel(Shell &shell, QWidget *parent);

    // Checks the world and fills the list.
    void refresh();
    const ProblemReport &report() const { return m_report; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void open(QTreeWidgetItem *item);

    Shell &m_shell;
    QTreeWidget *m_list;
    ProblemReport m_report;
    bool m_stale = true;
};

// Hangs the panel on "Tools → Probleme anzeigen"; it docks at the bottom of
// the main window, hidden until asked for.
ProblemsPanel *installproblems(Shell &shell);

} // namespace zorbo
