#pragma once

#include "tools/squadnumbers.h"
#include "tools/ui/teamcheckwindow.h"

class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace zorbo {

// frmrueckennummer: finds the teams in which two players wear the same
// squad number, lists a team's squad with the repeats marked, and gives a
// player a new number: a click on him, the number typed, Enter.
class SquadNumberWindow : public TeamCheckWindow {
    Q_OBJECT
public:
    SquadNumberWindow(Shell &shell, QWidget *parent);

private:
    void search();
    // Shows the chosen team's squad; a team whose first 20 lines show no
    // repeat leaves the list, and the next one comes up.
    void showteam();
    void edit();
    void save();

    QComboBox *m_teams;
    QListWidget *m_players;
    QLineEdit *m_number;
    QPushButton *m_update;
    QList<SquadLine> m_lines;
};

} // namespace zorbo
