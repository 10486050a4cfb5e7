#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace zorbo {

class TeamLists;

// frmopen: asks whether a team file becomes a new club in a country or
// goes over an existing club.
class OpenDialog : public QDialog {
    Q_OBJECT
public:
    OpenDialog(TeamLists *lists, QWidget *parent = nullptr);

    // Prepares the dialog for a file: its title and no option chosen.
    void setfile(const QString &path);
    bool newclub() const;
    QString country() const;
    qint64 club() const; // -1 when none is chosen

    void optnew_Click(int index);

private:
    void updateok();

    QString m_path;
    QLabel *m_lblverein;
    QRadioButton *m_optnew[2];
    QComboBox *m_cboland;
    QComboBox *m_cboverein;
    QPushButton *m_btnok;
};

} // namespace zorbo
