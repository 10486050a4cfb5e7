#pragma once

#include "core/history.h"

#include <QDialog>

class QPushButton;
class QTableWidget;

namespace zorbo {

class Shell;

// frmwiederherstellung: the restore points of the world, newest first, with
// date, reason, size and the numbers of clubs and players; one of them
// brings the world back as it was, after the present one has been kept as a
// restore point too. The user makes points of his own, under a name, and
// deletes points.
class RestoreWindow : public QDialog {
    Q_OBJECT

public:
    RestoreWindow(Shell &shell, QWidget *parent);

    // Reads the folder of the restore points and fills the table.
    void fill();

private:
    void restoreselected();
    void makepoint();
    void deleteselected();
    // Shows the points anew and tells the outcome: in the status bar, a
    // failure in a message box, a success there too when tellsuccess.
    void finish(const QString &title, const Result &done, bool tellsuccess);
    // The chosen point, or null.
    const RestorePoint *selected() const;

    Shell &m_shell;
    QTableWidget *m_table;
    QPushButton *m_restore;
    QPushButton *m_delete;
    QList<RestorePoint> m_points;
};

// "Optionen → Wiederherstellungspunkte...": the window, made once, filled
// anew and shown modal.
void showrestorepoints(Shell &shell);

} // namespace zorbo
