#pragma once

#include "anstoss/aetfile.h"
#include "anstoss/importsave.h"
#include "anstoss/squadbuilder.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QTabBar;
class QTabWidget;
class QTreeWidget;

namespace zorbo {

class A4List;
class KitShow;
class Shell;

// frma4import: one exporter club beside the club it replaces. Per group the
// user picks the file's or the database's values, and builds the new squad
// of 20 out of both lists. Nothing is written before a save button.
class Workbench : public QDialog {
    Q_OBJECT
public:
    // importnummer -1 is the free-player run, in which the window is never shown.
    Workbench(Shell &shell, const QString &file, qint64 importnummer, QWidget *parent = nullptr,
              FileEncoding encoding = FileEncoding::Detect);

    // Ticks or clears a box, running its fill as a click does.
    void setimport(int index, bool ticked);
    void chkimport_Click(int index);
    // A popup command on a list, as mnupopup_item(index).
    void mnupopup_item_Click(QTreeWidget *list, int index);
    void mnupopup_selbest_Click(int index);
    // Copies the selection of a source list into the new squad, as a drop does.
    void dropfrom(const QString &source);
    void pictrikot_DblClick(int slot);
    void btnteamsave_Click();
    void btnspielersave_Click();
    // Clears the boxes and closes.
    void btnabbrechen_Click();
    // The popup that a right click on the list shows.
    QMenu *popupfor(QTreeWidget *list);

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // A run changed the world: the club's values and its list of players
    // are read again where the change names them; a squad built of club
    // players the change touched is dropped only when the user says so.
    void worldchanged(const Change &change);
    QWidget *teampage();
    QWidget *playerpage();
    void showtrikot(int slot);
    void showlivetrikot(int slot);
    void refreshlists();
    void updatesave();
    A4List *listof(SquadBuilder::Source source) const;
    QList<int> selectedrows(QTreeWidget *list) const;
    QString fieldsof(int index) const;

    Shell &m_shell;
    QString m_file;
    qint64 m_nummer;
    AetFile m_aet;
    bool m_loaded = false;
    ClubShown m_club;
    SquadBuilder m_builder;
    bool m_saving = false; // while the player save of this window runs

    QCheckBox *m_chkimport[4];
    QLineEdit *m_txttnr, *m_txtgrafnr, *m_txtteamlang, *m_txtteamkurz, *m_txtstadt;
    QLineEdit *m_txtstadion, *m_txtsitz, *m_txtsteh;
    QComboBox *m_cboland, *m_cbokontinent;
    QLabel *m_label1, *m_wappen;
    KitShow *m_pictrikot[3];
    QPushButton *m_btnteamsave, *m_btnspielersave;
    QTabBar *m_tabspieler;
    QWidget *m_fraexporter, *m_fraeditor;
    A4List *m_lstvimport, *m_lstveditor, *m_lstveditornew;
    QMenu *m_popup = nullptr;
};

} // namespace zorbo
