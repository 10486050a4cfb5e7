// The tree's click dispatch and what it opens: the team tab, the grid and
// the player tab.
#include "editor/ui/editorview.h"

#include "core/settings.h"
#include "core/ui/shell.h"
#include "core/ui/dialogs.h"
#include "editor/playergrid.h"
#include "editor/ui/playertab.h"
#include "editor/ui/teamtab.h"
#include "platform/numbers.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>

namespace zorbo {

void EditorView::tvdb_NodeClick(QTreeWidgetItem *item)
{
    if (!item)
        return;
    const QString key = item->data(0, Qt::UserRole).toString();
    const QChar kind = key.isEmpty() ? QChar() : key.front();
    m_note.clear();
    m_shell.status(QString());
    anaus(NationalMode, false);
    // The player tab shows a player of the grid, which the node fills anew.
    m_playertab->clear();
    m_gridrow = -1;
    m_shownkey = key;

    // A team that exists only in the tree so far; the selection memory
    // stays with the last stored one.
    if (key.size() > 2 && key.endsWith(QLatin1Char('_')) && (kind == QLatin1Char('L') || kind == QLatin1Char('T'))) {
        const qint64 number = key.mid(1, key.size() - 2).toLongLong();
        const QString parentText = item->parent() ? item->parent()->text(0) : QString();
        anaus(NationalMode, true);
        if (kind == QLatin1Char('L'))
            showlandnew(number, parentText);
        else
            showteamnew(number, parentText);
        for (int slot = 0; slot < 3; ++slot)
            showtrikot2(0, slot);
        m_gridmodel->clear();
        m_tabedit->setCurrentIndex(0);
        m_shell.setshown(key, item->text(0));
        return;
    }

    const QString rest = key.mid(1);
    const double number = valtext(rest);
    if (kind == QLatin1Char('T') && number >= 0 && rest != QLatin1String("0")) {
        anaus(ClubMode, true);
        for (int slot = 0; slot < 3; ++slot)
            showtrikot(qint64(number), TeamTable::Vereine, slot);
        showteam(qint64(number), ClubMode);
        showspielerliste(qint64(number));
        m_tabedit->setCurrentIndex(0);
    } else if (kind == QLatin1Char('L') && number >= 0) {
        anaus(NationalMode, true);
        for (int slot = 0; slot < 3; ++slot)
            showtrikot(qint64(number), TeamTable::VereineNational, slot);
        showteam(qint64(number), NationalMode);
        showspielerliste(qint64(number));
        m_tabedit->setCurrentIndex(0);
    } else if (kind == QLatin1Char('T') && number == 0) {
        anaus(MarketMode, true);
        showteam(0, MarketMode);
        showspielerliste(0);
        m_tabedit->setCurrentIndex(0);
    } else {
        // A continent or the root: no team, no squad.
        m_teamtab->clear();
        m_gridmodel->clear();
    }
    m_tvdb->setProperty("Tag", key);
    m_shell.setshown(key, item->text(0));
}

void EditorView::anaus(TeamMode mode, bool state)
{
    m_playertab->setOpen(false);
    const auto setFrames = [&](std::initializer_list<const char *> names) {
        for (const char *name : names)
            m_teamtab->frame(QLatin1String(name))->setEnabled(state);
    };
    if (mode == MarketMode) {
        setFrames({"Frame7"});
        m_frame1->setEnabled(state);
        return;
    }
    setFrames({"Frame4", "Frame5(0)", "Frame5(1)", "Frame5(2)", "Frame6", "Frame7"});
    m_frame1->setEnabled(state);
    m_teamtab->btnteamsave()->setEnabled(state);
    if (mode == NationalMode) {
        m_teamtab->setNational(state);
        m_teamtab->cboland()->setEnabled(false);
    } else {
        m_teamtab->setNational(false);
        m_teamtab->cboland()->setEnabled(state);
    }
}

void EditorView::reportunlisted(const QString &land)
{
    m_note = QStringLiteral("Das Land »%1« steht in keiner Liste; es bleibt gespeichert, bis ein anderes gewählt wird.")
                 .arg(land);
    m_shell.status(m_note);
}

void EditorView::showteam(qint64 nummer, TeamMode mode)
{
    if (!db())
        return;
    std::optional<TeamForm> form;
    try {
        form = readteam(*db(), nummer, mode);
    } catch (const DbError &e) {
        m_shell.status(e.text());
        return;
    }
    if (form && !m_teamtab->setForm(*form, mode))
        reportunlisted(form->land);
}

void EditorView::showlandnew(qint64 nummer, const QString &kontinent)
{
    m_teamtab->setForm(newcountryform(nummer, kontinent), NationalMode);
    m_teamtab->cboland()->setEnabled(false);
}

void EditorView::showteamnew(qint64 nummer, const QString &land)
{
    m_teamtab->setForm(newclubform(nummer, land), ClubMode);
    m_teamtab->cboland()->setEnabled(true);
}

void EditorView::showspielerliste(qint64 team)
{
    m_gridrow = -1;
    if (!db())
        return;
    QList<GridPlayer> rows;
    {
        const auto busy = m_shell.busy(QStringLiteral("Lade Spielerliste..."));
        m_grid->setEnabled(false);
        try {
            rows = loadspielerliste(*db(), team);
        } catch (const DbError &e) {
            m_shell.dialogs().warning(m_shell.window(), QStringLiteral("Spielerliste"), e.text());
        }
        m_gridmodel->setRows(std::move(rows));
        // An empty squad's rows can't be chosen.
        m_grid->setEnabled(!m_gridmodel->isEmptySquad());
    }
    // The busy state has cleared the status bar; a note of this click stays.
    if (!m_note.isEmpty())
        m_shell.status(m_note);
}

void EditorView::flxgrdspieler_Click(const QModelIndex &index)
{
    if (!index.isValid() || m_gridmodel->isEmptySquad())
        return;
    if (m_playertab->modified() && m_shell.settle(m_playerdoc.get()) == Settled::Cancelled) {
        // The grid stays on the player on show.
        if (m_gridrow >= 0)
            m_grid->selectRow(m_gridrow);
        return;
    }
    m_gridrow = index.row();
    m_playertab->setOpen(true);
    const GridPlayer player = m_gridmodel->player(m_gridrow);
    if (!m_playertab->setPlayer(player))
        reportunlisted(player.nation.value_or(QString()));
    if (const QList<qint64> unknown = m_playertab->unknowntalents(); !unknown.isEmpty()) {
        QStringList numbers;
        for (qint64 n : unknown)
            numbers << QString::number(n);
        m_shell.status(QStringLiteral("Der Spieler hat Talente, die der Editor nicht kennt: %1. Sie bleiben gespeichert.")
                              .arg(numbers.join(QStringLiteral(", "))));
    }
    m_tabedit->setCurrentIndex(1);
}

} // namespace zorbo
