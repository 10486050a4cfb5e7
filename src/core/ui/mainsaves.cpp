// The two saves of the editor tabs.
#include "core/ui/mainwindow.h"

#include "core/ui/busy.h"
#include "core/ui/dialogs.h"
#include "editor/playergrid.h"
#include "editor/playersave.h"
#include "editor/ui/playertab.h"
#include "editor/ui/teamtab.h"

#include <QTreeWidget>

namespace zorbo {

void MainWindow::btnteamsave_Click()
{
    QTreeWidgetItem *node = m_tvdb->currentItem();
    if (!db() || !node)
        return;
    QString key = node->data(0, Qt::UserRole).toString();
    const bool isNew = key.endsWith(QLatin1Char('_'));
    const TeamForm form = m_teamtab->form();
    Result saved;
    {
        Busy busy(this, m_status, m_progress, QStringLiteral("Speichere Land/Verein..."));
        saved = teamsave(*db(), form, isNew, node->text(0), m_settings.trikotsatz);
    }
    if (!saved) {
        m_dialogs->warning(this, QStringLiteral("Land/Verein speichern"), saved.message);
        return;
    }
    if (isNew)
        key.chop(1);
    m_tvdb->setProperty("Tag", key);
    reloadandshow();
}

void MainWindow::btnspielerspeichern_Click()
{
    if (!db() || m_gridrow < 0)
        return;
    GridPlayer player;
    const Result saved = spielersave(*db(), m_playertab->form(), &player);
    if (!saved) {
        m_dialogs->warning(this, QStringLiteral("Spieler speichern"), saved.message);
        return;
    }
    m_gridmodel->setPlayer(m_gridrow, player);
    m_playertab->setPlayer(player);
}

} // namespace zorbo
