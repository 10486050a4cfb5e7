#pragma once

#include "core/gamefiles.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QTreeWidget;

namespace zorbo {

class Shell;

// "Spieldateien prüfen": reads the game's 1_tm.cfg, 1_sp.cfg and wa.res into
// a scratch world, writes them back and lists every difference. The user's
// world is not touched.
class SelfCheckWindow : public QDialog {
    Q_OBJECT

public:
    SelfCheckWindow(Shell &shell, QWidget *parent);

    // The folder to check; empty: the folders of the settings.
    void setfolder(const QString &folder);
    // Runs the check and fills the list.
    void check();

private:
    Shell &m_shell;
    QLineEdit *m_folder;
    QTreeWidget *m_list;
    QLabel *m_answer;
};

// Takes "Tools → Spieldateien prüfen" and lends the window to the question
// before an export as its comparison.
void installselfcheck(Shell &shell);

} // namespace zorbo
