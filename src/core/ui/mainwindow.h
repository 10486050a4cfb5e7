#pragma once

#include "core/schema.h"
#include "core/settings.h"
#include "core/teamtree.h"

#include <QHash>
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

namespace zorbo {

class Dialogs;

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

    Database *db() const { return m_db.db.get(); }
    const Settings &settings() const { return m_settings; }
    const TeamTree &teamtree() const { return m_tree; }
    QAction *action(const QString &objectName) const;
    // Marks kit set 0 or 1 in menu and toolbar and stores it in the settings.
    void mnuoptionenitem_Click(int index);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildwindow();
    void buildmenus();
    void buildtoolbar();
    void closedb();
    void showabout();

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
    QLabel *m_status = nullptr;
    QLabel *m_programLabel = nullptr;
    QProgressBar *m_progress = nullptr;
    QHash<QString, QAction *> m_actions;
};

} // namespace zorbo
