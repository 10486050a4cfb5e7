#pragma once

#include "tools/squadnumbers.h"

#include <QDialog>
#include <functional>
#include <optional>

class QGridLayout;
class QPushButton;

namespace zorbo {

class Shell;

// The shape the checks of the tools menu share ("Rückennummer überprüfen",
// "Vereinsname überprüfen"): the button that starts the search on top, what
// the check shows in rows 1 to 3 of grid(), and "Abbrechen", which closes
// the window, at the bottom.
class TeamCheckWindow : public QDialog {
    Q_OBJECT

protected:
    TeamCheckWindow(Shell &shell, QWidget *parent, const QString &name, const QString &title, const QString &start);

    QGridLayout *grid() const { return m_grid; }

    // Runs the search while the program shows it is busy, and says what
    // came of it: "Keine Fehler vorhanden" only when it went through and
    // found nothing; a failure of the database or a stop by "Abbrechen" is
    // told as such, and gives nothing.
    std::optional<QList<NamedTeam>> search(const std::function<QList<NamedTeam>(Database &, const Progress &)> &find);

    Shell &m_shell;
    QPushButton *m_start;

private:
    QGridLayout *m_grid;
};

} // namespace zorbo
