#pragma once

#include <QDialog>

class QEventLoop;
class QLabel;
class QListWidget;
class QPushButton;

namespace zorbo {

class Shell;

// frmspielerbild: renames the player pictures named after players to the
// players' numbers. A picture several players fit waits for a click on one
// of them in lstnamen; closing the window then ends the run.
class PictureWindow : public QDialog {
    Q_OBJECT
public:
    PictureWindow(Shell &shell, QWidget *parent);

    // Lists the pictures still to do.
    void refresh();
    void reject() override;

private:
    void run();

    Shell &m_shell;
    QListWidget *m_files;
    QLabel *m_file;
    QListWidget *m_names;
    QPushButton *m_start;
    QEventLoop *m_waiting = nullptr;
    bool m_stop = false;
};

} // namespace zorbo
