// The two saves of the editor tabs.
#include "editor/ui/editorview.h"

#include "core/settings.h"
#include "core/ui/shell.h"
#include "core/ui/dialogs.h"
#include "editor/playergrid.h"
#include "editor/playersave.h"
#include "editor/ui/playertab.h"
#include "editor/ui/teamtab.h"

#include <QTreeWidget>

namespace zorbo {

void EditorView::btnteamsave_Click()
{
    QTreeWidgetItem *node = m_tvdb->currentItem();
    if (!db() || !node)
        return;
    QString key = node->data(0, Qt::UserRole).toString();
    const bool isNew = key.endsWith(QLatin1Char('_'));
    const TeamForm form = m_teamtab->form();
    Result saved;
    {
        const auto busy = m_shell.busy(QStringLiteral("Speichere Land/Verein..."));
        saved = teamsave(*db(), form, isNew, node->text(0), settings().trikotsatz);
    }
    if (!saved) {
        m_shell.dialogs().warning(m_shell.window(), QStringLiteral("Land/Verein speichern"), saved.message);
        return;
    }
    if (isNew)
        key.chop(1);
    m_shell.worldchanged(key);
}

void EditorView::btnspielerspeichern_Click()
{
    if (!db() || m_gridrow < 0)
        return;
    GridPlayer player;
    const Result saved = spielersave(*db(), m_playertab->form(), &player);
    if (!saved) {
        m_shell.dialogs().warning(m_shell.window(), QStringLiteral("Spieler speichern"), saved.message);
        return;
    }
    m_gridmodel->setPlayer(m_gridrow, player);
    m_playertab->setPlayer(player);
}

} // namespace zorbo
