#pragma once

#include "tools/swap.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace zorbo {

class Shell;

// frmtransmarkt: swaps a club's player with a free player of an exporter
// club (mode 0) or with a player of another club (mode 1). In each list the
// one entry not ghosted is the pick; the swap needs a pick on both sides.
// Captions over the lists and a line under them say who goes where.
class TransferWindow : public QDialog {
    Q_OBJECT
public:
    TransferWindow(Shell &shell, QWidget *parent);

    // Fills the exporter clubs anew; called at each opening.
    void loadfreispielerland();

private:
    bool freemode() const;
    void modechanged(int mode);
    void freeclubchosen();
    void clubchosen(int side);
    void fill(int side, const QList<SwapEntry> &entries);
    void picked(int side, QTreeWidgetItem *item);
    void updatebutton();
    // The captions over the lists and the line that tells what a swap does.
    void tellsides();
    void swap();

    Shell &m_shell;
    QRadioButton *m_mode[2];
    QComboBox *m_freeclubs;
    QComboBox *m_clubs[2];
    QTreeWidget *m_lists[2];
    QLabel *m_sides[2];
    QLabel *m_summary;
    QPushButton *m_swap;
    QTreeWidgetItem *m_pick[2] = {nullptr, nullptr};
};

} // namespace zorbo
