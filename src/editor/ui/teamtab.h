#pragma once

#include "editor/teamsave.h"

#include <QWidget>
#include <array>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStringListModel;

namespace zorbo {

// The tab "Land/Verein": one form for a club, a national team and, in
// part, the transfer market.
class TeamTab : public QWidget {
    Q_OBJECT
public:
    TeamTab(QStringListModel *laender, QWidget *parent = nullptr);

    // Fills the form. A country that is not in the list falls back on the
    // list's first entry; returns false then.
    bool setForm(const TeamForm &form, TeamMode mode);
    TeamForm form() const;
    // The kit folder of the current kit set, for the kit drawings.
    void setKitFolder(const QString &folder) { m_kitFolder = folder; }
    void setArt(int slot, int art);

    // True exactly when a national team is on show; the save takes its table by it.
    bool national() const;
    void setNational(bool national);

    QGroupBox *frame(const QString &name) const;
    QComboBox *cboland() const { return m_land; }
    QPushButton *btnteamsave() const { return m_save; }

signals:
    void saveRequested();

private:
    QLineEdit *m_nummer, *m_grafnr, *m_lang, *m_kurz, *m_stadt, *m_stadion, *m_sitz, *m_steh;
    QComboBox *m_land, *m_kontinent;
    QLabel *m_kontinentLabel, *m_wappen;
    std::array<QLabel *, 3> m_trikot{};
    QPushButton *m_save;
    QString m_kitFolder;
};

} // namespace zorbo
