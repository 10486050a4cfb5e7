#pragma once

#include "core/schema.h"
#include "core/settings.h"
#include "core/teamtree.h"
#include "editor/teamsave.h"

#include <QHash>
#include <QIcon>
#include <QMainWindow>
#include <memory>

class QAction;
class QLabel;
class QProgressBar;
class QTabWidget;
class QTableView;
class QTreeWidget;
class QTreeWidgetItem;
class QGroupBox;
class QModelIndex;

namespace zorbo {

class CrestPicker;
class Dialogs;
class KitPicker;
class KitTarget;
class PlayerGridModel;
class PlayerTab;
class TeamLists;
class TeamTab;

// The tree's pictures by their number in the image list: continent, country
// (also the root), club.
QIcon treeicon(int picture);

// frmmain: the tree on the left, the editor tabs on the right, the player
// grid below, menu, toolbar and status bar.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // programFolder: where zorboeditor.ini and zorbo.mdb live.
    MainWindow(const QString &programFolder, Dialogs *dialogs);
    ~MainWindow() override;

    // The start-up order: settings, caption and geometry, database, tree,
    // grid, free players' table, kit set.
    void formload();
    // Rebuilds the tree and all country and club lists from the database,
    // restoring the selection from the tree's Tag.
    void reloadtree();
    // After a run that changed the world: the tree and the lists anew, then
    // the form, the grid and the player tab as the database now holds them,
    // or closed when their node is gone.
    void reloadandshow();
    // The tool "Spieler&gesichter überprüfen".
    void checkallgesichter();

    Database *db() const { return m_db.db.get(); }
    const Settings &settings() const { return m_settings; }
    const TeamTree &teamtree() const { return m_tree; }
    QAction *action(const QString &objectName) const;
    // The country and club lists that every window's combo boxes show.
    TeamLists *lists() const { return m_lists; }
    PlayerGridModel *gridmodel() const { return m_gridmodel; }

    // A click on a tree node: opens the editor for what the node stands for.
    void tvdb_NodeClick(QTreeWidgetItem *item);
    // Opens (state true) or closes the parts of the window for a team mode.
    void anaus(TeamMode mode, bool state);
    void showteam(qint64 nummer, TeamMode mode);
    void showlandnew(qint64 nummer, const QString &kontinent);
    void showteamnew(qint64 nummer, const QString &land);
    void showspielerliste(qint64 team);
    void btnteamsave_Click();
    void btnspielerspeichern_Click();
    // 0: frmneu, a new country or club as a provisional tree node.
    // Team files: 1 opens one as a new club or over a club, 2 saves the
    // club on show.
    void mnudateiitem_Click(int index);
    // The import and export runs of the file menu: 0 the game's configuration
    // files, 1 the crest archive.
    void mnuimportitem_Click(int index);
    void mnuexportitem_Click(int index);
    // Adds a provisional node under a continent (land) or a country and opens
    // it in the team tab; nothing when the parent is not in the tree.
    QTreeWidgetItem *addprovisional(bool land, const QString &choice);
    // 0 and 1: switch to that kit set; 2: copy the kit set's ma.res into the game.
    void mnuoptionenitem_Click(int index);

    // Kits and crest of the team tab (mainkits.cpp).
    void showtrikot(qint64 nummer, TeamTable table, int slot);
    // Art with the colours it comes with in the current set; target: the team tab when none.
    void showtrikot2(int art, int slot, KitTarget *target = nullptr);
    void pictrikot_DblClick(int slot);
    void ImgXwappen_Click();
    // The pickers once they have been opened; nothing before.
    KitPicker *kitpicker() const { return m_kitpicker; }
    CrestPicker *crestpicker() const { return m_crestpicker; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildwindow();
    void buildmenus();
    void buildtoolbar();
    void connectexchange();
    void closedb();
    void showabout();
    void flxgrdspieler_Click(const QModelIndex &index);
    void setActionOpen(const QString &name, bool open);
    void reportunlisted(const QString &land);
    void shownew();
    void switchkitset(int satz);
    void copykitset();

    QString m_programFolder;
    Dialogs *m_dialogs;
    Settings m_settings;
    OpenedDb m_db;
    TeamTree m_tree;

    QGroupBox *m_frame1 = nullptr;
    QGroupBox *m_frame2 = nullptr;
    QGroupBox *m_frame3 = nullptr;
    QTreeWidget *m_tvdb = nullptr;
    QTabWidget *m_tabedit = nullptr;
    QTableView *m_grid = nullptr;
    TeamLists *m_lists = nullptr;
    TeamTab *m_teamtab = nullptr;
    PlayerTab *m_playertab = nullptr;
    PlayerGridModel *m_gridmodel = nullptr;
    int m_gridrow = -1; // the grid row on show in the player tab
    QString m_note;     // what the status bar tells after the current click
    QLabel *m_status = nullptr;
    QLabel *m_programLabel = nullptr;
    QProgressBar *m_progress = nullptr;
    QHash<QString, QAction *> m_actions;
    KitPicker *m_kitpicker = nullptr;
    CrestPicker *m_crestpicker = nullptr;
};

} // namespace zorbo
