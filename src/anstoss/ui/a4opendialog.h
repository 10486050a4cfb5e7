#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace zorbo {

class TeamLists;

// frma4open: an exporter club goes into the free players or over a club of
// the world, which the dialog preselects from the file's name, town and country.
class A4OpenDialog : public QDialog {
    Q_OBJECT
public:
    A4OpenDialog(TeamLists *lists, QWidget *parent = nullptr);

    // Prepares the dialog for a file: the club's name as the file is called,
    // no option chosen, btnok and cboverein disabled.
    void setfile(const QString &path, const QString &clubname);
    bool freeplayers() const;
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
