#pragma once

#include "tools/ui/teamcheckwindow.h"

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace zorbo {

// frmteamname: lists the clubs whose names are too long for the game,
// proposes shorter ones (the whole name, cut left or right by a word) and
// saves the name as edited.
class ClubNameWindow : public TeamCheckWindow {
    Q_OBJECT
public:
    ClubNameWindow(Shell &shell, QWidget *parent);

private:
    void search();
    void propose();
    void save();

    QListWidget *m_clubs;
    QRadioButton *m_options[3];
    QLineEdit *m_name;
    QPushButton *m_update;
};

} // namespace zorbo
