#include "app/playerlistpanel.h"

#include "app/openentity.h"
#include "core/ui/shell.h"
#include "editor/ui/playerlistview.h"

#include <QLineEdit>
#include <QMainWindow>

namespace zorbo {

PlayerListPanel::PlayerListPanel(Shell &shell, QWidget *parent)
    : QDockWidget(QStringLiteral("Spielerliste"), parent), m_shell(shell)
{
    setObjectName(QStringLiteral("dockspielerliste"));
    // A world opened anew needs a list of its own.
    connect(&shell, &Shell::opened, this, [this] {
        delete m_view;
        m_view = nullptr;
    });
}

PlayerListView *PlayerListPanel::view()
{
    if (!m_view && m_shell.db()) {
        m_view = new PlayerListView(m_shell, this);
        setWidget(m_view);
        connect(m_view, &PlayerListView::openplayer, this,
                [this](const QString &teamKey, qint64 player) { openentity(m_shell, teamKey, player); });
    }
    return m_view;
}

PlayerListPanel *installplayerlist(Shell &shell)
{
    auto *window = qobject_cast<QMainWindow *>(shell.window());
    auto *panel = new PlayerListPanel(shell, window);
    if (window) {
        // Beside the forms, a tab with the other panels: below them it
        // would leave the squad grid a few rows.
        window->addDockWidget(Qt::RightDockWidgetArea, panel);
        for (QDockWidget *other : window->findChildren<QDockWidget *>(Qt::FindDirectChildrenOnly)) {
            if (other != panel && window->dockWidgetArea(other) == Qt::RightDockWidgetArea) {
                window->tabifyDockWidget(other, panel);
                break;
            }
        }
    }
    panel->hide();
    shell.handle(QStringLiteral("mnubearbeitenitem(5)"), [panel, window] {
        PlayerListView *view = panel->view();
        if (!view)
            return;
        const bool first = panel->isHidden();
        panel->show();
        panel->raise();
        // Wide enough for its columns, while the forms keep their room.
        if (first && window)
            window->resizeDocks({panel}, {window->width() / 2}, Qt::Horizontal);
        view->findChild<QLineEdit *>(QStringLiteral("txtfiltertext"))->setFocus();
    });
    return panel;
}

} // namespace zorbo
