#pragma once

#include <QDockWidget>

namespace zorbo {

class PlayerListView;
class Shell;

// The dockable panel "Spielerliste" beside the forms, a tab with the other
// panels. Its list is made when it is first asked for, on the world then
// open; a double click on a player opens him in the main window.
class PlayerListPanel : public QDockWidget {
    Q_OBJECT

public:
    PlayerListPanel(Shell &shell, QWidget *parent);
    // The list, made now if it isn't yet; null without a database.
    PlayerListView *view();

private:
    Shell &m_shell;
    PlayerListView *m_view = nullptr;
};

// Hangs the panel on "Bearbeiten → Alle Spieler..." (Ctrl+L).
PlayerListPanel *installplayerlist(Shell &shell);

} // namespace zorbo
