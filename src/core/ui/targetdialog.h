#pragma once

#include <QDialog>
#include <QStringList>
#include <array>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace zorbo {

class TeamLists;

// The small window that asks where a club from a file goes: the file's club
// in lblverein, two options optnew(0) and optnew(1) (neither chosen at
// first), the shared country and club lists cboland and cboverein, and
// "Übernehmen" (btnok) and "Abbrechen". The windows of the team file and of
// the Anstoss import each decide what their options mean.
class TargetDialog : public QDialog {
    Q_OBJECT
public:
    // The club chosen in cboverein; -1 when none is.
    qint64 club() const;
    virtual void optnew_Click(int index) = 0;

protected:
    TargetDialog(const QString &name, const std::array<const char *, 2> &captions,
                 const std::array<const char *, 2> &tips, TeamLists *lists, QWidget *parent);

    // Both options cleared.
    void clearoptions();
    // Chooses option index alone.
    void choose(int index);
    // The texts of cboverein's entries, in its order.
    QStringList clubentries() const;

    QString m_path;
    QLabel *m_lblverein;
    QRadioButton *m_optnew[2];
    QComboBox *m_cboland;
    QComboBox *m_cboverein;
    QPushButton *m_btnok;
};

} // namespace zorbo
