#pragma once

#include "core/settings.h"
#include "core/world.h"

#include <QHash>
#include <QMainWindow>

class QAction;
class QLabel;
class QProgressBar;
class QPushButton;

namespace zorbo {

class Dialogs;
class EditorView;
class Shell;
class TeamLists;

// frmmain: the frame around the subsystems' windows. It builds the menus and
// the toolbar from its tables, keeps the status bar, opens the world and
// hands all of it to the subsystems through its Shell; the tree, the editor
// tabs and the player grid are the editor's view in the middle.
// "Datei → Zuletzt geöffnet": the files opened or imported last, each
// opened again by a click.
void installrecentfiles(Shell &shell);

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // programFolder: where zorboeditor.ini and zorbo.mdb live.
    MainWindow(const QString &programFolder, Dialogs *dialogs);
    ~MainWindow() override;

    // The start-up order: settings, caption and geometry, database, then
    // every subsystem fills its windows from the world.
    void formload();

    World *world() const { return m_world.get(); }
    Database *db() const { return m_world ? m_world->db() : nullptr; }
    const Settings &settings() const { return m_world ? m_world->settings() : m_nosettings; }
    QAction *action(const QString &objectName) const;
    TeamLists *lists() const { return m_lists; }
    Shell &shell() const { return *m_shell; }
    EditorView *editor() const { return m_editor; }
    // Opens a change file's preview (the command line's and the recent
    // files' hook for .zae).

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    class WindowShell;
    friend class WindowShell;

    void buildstatusbar();
    void buildmenus();
    void buildtoolbar();
    void handle(const QString &name, std::function<void()> work);
    void showabout();

    QString m_programFolder;
    Dialogs *m_dialogs;
    std::unique_ptr<World> m_world;
    Settings m_nosettings; // until the world is open
    TeamLists *m_lists = nullptr;
    Shell *m_shell = nullptr;
    EditorView *m_editor = nullptr;

    QLabel *m_status = nullptr;
    QLabel *m_programLabel = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_cancel = nullptr; // "Abbrechen" of the run going
    QHash<QString, QAction *> m_actions;
};

} // namespace zorbo
