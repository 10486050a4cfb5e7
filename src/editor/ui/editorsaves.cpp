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

bool EditorView::btnteamsave_Click()
{
    QTreeWidgetItem *node = shownitem();
    if (!db())
        return false;
    if (!node) {
        // A change (an undo, a run) took the row away while the form held
        // typing; the typing stays for the user to copy or drop.
        const TeamForm form = m_teamtab->form();
        const bool country = form.table == TeamTable::VereineNational;
        m_shell.dialogs().warning(
            m_shell.window(), QStringLiteral("Land/Verein speichern"),
            QStringLiteral("%1 „%2“ lässt sich nicht speichern: %3 steht nicht mehr in der Tabelle %4, eine Änderung hat "
                           "%3 entfernt. Die Eingaben bleiben im Formular; „Verwerfen“ gibt sie auf.")
                .arg(country ? QStringLiteral("Das Land") : QStringLiteral("Der Verein"), form.name,
                     country ? QStringLiteral("es") : QStringLiteral("er"),
                     country ? QStringLiteral("vereine_national") : QStringLiteral("vereine")));
        return false;
    }
    QString key = node->data(0, Qt::UserRole).toString();
    const bool isNew = key.endsWith(QLatin1Char('_'));
    const TeamForm form = m_teamtab->form();
    const QString text = node->text(0);
    // The reload that the save's change notice brings shows the team saved,
    // a new one under its number for good.
    m_select = isNew ? key.chopped(1) : key;
    m_reloaded = false;
    Result saved;
    {
        const auto busy = m_shell.busy(QStringLiteral("Speichere Land/Verein..."));
        const bool country = form.table == TeamTable::VereineNational;
        const QString what = isNew ? (country ? QStringLiteral("Neues Land „%1“") : QStringLiteral("Neuer Verein „%1“"))
                                   : (country ? QStringLiteral("Land „%1“") : QStringLiteral("Verein „%1“"));
        saved = m_shell.run([&](Database &db) { return teamsave(db, form, isNew, text, settings().trikotsatz); }, {},
                            Step{what.arg(form.name) + QStringLiteral(" gespeichert")});
    }
    const QString select = std::exchange(m_select, QString());
    if (!saved) {
        m_shell.dialogs().warning(m_shell.window(), QStringLiteral("Land/Verein speichern"), saved.message);
        return false;
    }
    if (!m_reloaded) {
        m_tvdb->setProperty("Tag", select);
        reloadandshow();
    }
    return true;
}

bool EditorView::btnspielerspeichern_Click()
{
    // A player whose row left the grid may still hold typing; the save
    // says what became of him.
    if (!db() || (m_gridrow < 0 && !m_playertab->modified()))
        return false;
    GridPlayer player;
    const PlayerForm form = m_playertab->form();
    // The grid row and the tab take the player as written; the rest of
    // what is on show stays as it is.
    m_ownsave = true;
    const Step step{QStringLiteral("Spieler „%1“ gespeichert")
                        .arg(QStringList{form.vorname, form.name}.join(QLatin1Char(' ')).trimmed())};
    const Result saved = m_shell.run([&](Database &db) { return spielersave(db, form, &player); }, {}, step);
    m_ownsave = false;
    if (!saved) {
        m_shell.dialogs().warning(m_shell.window(), QStringLiteral("Spieler speichern"), saved.message);
        return false;
    }
    if (m_gridrow >= 0 && m_gridrow < m_gridmodel->rowCount() && m_gridmodel->player(m_gridrow).nummer == player.nummer)
        m_gridmodel->setPlayer(m_gridrow, player);
    m_playertab->setPlayer(player);
    return true;
}

} // namespace zorbo
