#pragma once

#include "core/teamtree.h"
#include "core/ui/shell.h"
#include "editor/teamsave.h"

#include <QIcon>
#include <QWidget>

class QGroupBox;
class QModelIndex;
class QTabWidget;
class QTableView;
class QTreeWidget;
class QTreeWidgetItem;

namespace zorbo {

class Database;
class KitPicker;
class KitTarget;
class PlayerGridModel;
class PlayerTab;
struct Settings;
class Shell;
class TeamTab;

// The tree's pictures by their number in the image list: continent, country
// (also the root), club.
QIcon treeicon(int picture);

// The editor's part of the main window: the tree on the left, the editor
// tabs on the right, the player grid below. It reads what it shows from the
// world and reads it again whenever a run has changed the world.
class EditorView : public QWidget {
    Q_OBJECT
public:
    explicit EditorView(Shell &shell, QWidget *parent = nullptr);
    ~EditorView() override;

    // Rebuilds the tree and all country and club lists from the database,
    // restoring the selection from the tree's Tag.
    void reloadtree();
    // After a run that changed the world: the tree and the lists anew, then
    // the form, the grid and the player tab as the database now holds them,
    // or closed when their node is gone.
    void reloadandshow();
    // The tool "Spieler&gesichter überprüfen".
    void checkallgesichter();

    const TeamTree &teamtree() const { return m_tree; }
    PlayerGridModel *gridmodel() const { return m_gridmodel; }

    // A click on a tree node: opens the editor for what the node stands for.
    void tvdb_NodeClick(QTreeWidgetItem *item);
    // Opens (state true) or closes the parts of the window for a team mode.
    void anaus(TeamMode mode, bool state);
    void showteam(qint64 nummer, TeamMode mode);
    void showlandnew(qint64 nummer, const QString &kontinent);
    void showteamnew(qint64 nummer, const QString &land);
    void showspielerliste(qint64 team);
    // The saves of the two tabs; false when refused (the user was told why).
    bool btnteamsave_Click();
    bool btnspielerspeichern_Click();
    // frmneu: a new country or club as a provisional tree node.
    void shownew();
    // Adds a provisional node under a continent (land) or a country and opens
    // it in the team tab; nothing when the parent is not in the tree.
    QTreeWidgetItem *addprovisional(bool land, const QString &choice);
    // 0 and 1: switch to that kit set.
    void mnuoptionenitem_Click(int index);

    // Kits and crest of the team tab (editorkits.cpp).
    void showtrikot(qint64 nummer, TeamTable table, int slot);
    // Art with the colours it comes with in the current set; target: the team tab when none.
    void showtrikot2(int art, int slot, KitTarget *target = nullptr);
    void pictrikot_DblClick(int slot);
    // The kit picker for a window of another subsystem (the shell's KitService).
    std::optional<ChosenKit> choosekit(int slot, int art);
    void ImgXwappen_Click();
    // The kit picker once it has been opened; nothing before.
    KitPicker *kitpicker() const { return m_kitpicker; }

private:
    void buildview();
    // The two tabs as the shell's documents (editorforms.cpp).
    void makedocuments();
    void opened();
    // A run changed the world: the tree, the form, the grid and the player
    // tab are read again where the change names what they show; a form with
    // typing keeps it. The player save's own change is not read back.
    void worldchanged(const Change &change);
    // A click or a key on a tree node: the forms are asked about their
    // typing first, and the tree stays on the node on show when the user cancels.
    void nodechosen(QTreeWidgetItem *item);
    // The node on show in the forms, or null.
    QTreeWidgetItem *shownitem() const;
    // The forms and the grid empty and closed, as at the start.
    void closeall();
    // Reads the grid again and keeps the player tab on its player, who is
    // shown anew when the change names him and the tab holds no typing.
    void refreshgrid(const Change &change);
    void marktab(int index, bool modified);
    // Shows the node with the key, rebuilding the tree when it lacks it.
    void showkey(const QString &key);
    Database *db() const;
    const Settings &settings() const;
    void flxgrdspieler_Click(const QModelIndex &index);
    void reportunlisted(const QString &land);
    void switchkitset(int satz);

    Shell &m_shell;
    TeamTree m_tree;

    QGroupBox *m_frame1 = nullptr;
    QGroupBox *m_frame2 = nullptr;
    QGroupBox *m_frame3 = nullptr;
    QTreeWidget *m_tvdb = nullptr;
    QTabWidget *m_tabedit = nullptr;
    QTableView *m_grid = nullptr;
    TeamTab *m_teamtab = nullptr;
    PlayerTab *m_playertab = nullptr;
    PlayerGridModel *m_gridmodel = nullptr;
    int m_gridrow = -1; // the grid row on show in the player tab
    QString m_shownkey;  // the key of the node on show in the forms
    std::unique_ptr<Document> m_teamdoc;
    std::unique_ptr<Document> m_playerdoc;
    QString m_note;     // what the status bar tells after the current click
    QString m_select;   // the key a save's reload shows
    bool m_reloaded = false;
    bool m_ownsave = false;
    KitPicker *m_kitpicker = nullptr;
    KitPicker *makekitpicker();
};

// Makes the editor's view the middle of the shell's window and takes the
// editor's entries: "Neu...", the kit sets, the face check, the tree's
// popup.
EditorView *installeditor(Shell &shell);

} // namespace zorbo
