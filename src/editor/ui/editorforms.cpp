// The forms as documents: their typing is asked about before it would be
// thrown away, and they follow the world's changes.
#include "editor/ui/editorview.h"

#include "core/ui/shell.h"
#include "editor/playergrid.h"
#include "editor/ui/playertab.h"
#include "editor/ui/teamtab.h"

#include <QGroupBox>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace zorbo {

namespace {

// One of the tabs as the shell sees it: its typing, its save and its revert.
class FormDocument : public Document {
public:
    FormDocument(QString title, std::function<bool()> modified, std::function<bool()> save,
                 std::function<void()> discard)
        : m_title(std::move(title)), m_modified(std::move(modified)), m_save(std::move(save)),
          m_discard(std::move(discard))
    {
    }
    bool modified() const override { return m_modified(); }
    QString title() const override { return m_title; }
    bool save() override { return m_save(); }
    void discard() override { m_discard(); }

private:
    QString m_title;
    std::function<bool()> m_modified;
    std::function<bool()> m_save;
    std::function<void()> m_discard;
};

} // namespace

void EditorView::makedocuments()
{
    m_teamdoc = std::make_unique<FormDocument>(
        QStringLiteral("Land/Verein"), [this] { return m_teamtab->modified(); }, [this] { return btnteamsave_Click(); },
        [this] { m_teamtab->revert(); });
    m_playerdoc = std::make_unique<FormDocument>(
        QStringLiteral("Spieler"), [this] { return m_playertab->modified(); },
        [this] { return btnspielerspeichern_Click(); }, [this] { m_playertab->revert(); });
    m_shell.adddocument(m_teamdoc.get(), this);
    m_shell.adddocument(m_playerdoc.get(), this);
}

void EditorView::marktab(int index, bool modified)
{
    // Typing not saved yet shows in the tab, as an editor marks its file.
    QString text = m_tabedit->tabText(index);
    if (text.endsWith(QLatin1String(" *")))
        text.chop(2);
    m_tabedit->setTabText(index, modified ? text + QStringLiteral(" *") : text);
}

Database *EditorView::db() const
{
    return m_shell.db();
}

const Settings &EditorView::settings() const
{
    return m_shell.settings();
}

void EditorView::worldchanged(const Change &change)
{
    if (m_ownsave)
        return;
    // The team save's own change: its form shows the team as saved.
    const bool saving = !m_select.isEmpty();
    if (saving)
        m_tvdb->setProperty("Tag", m_select);
    m_reloaded = true;
    // Asked before the lists are built anew, which change the form's
    // country boxes under it.
    const bool typed = m_teamtab->modified();
    if (change.everything || change.tables.contains(QStringLiteral("vereine"))
        || change.tables.contains(QStringLiteral("vereine_national")))
        reloadtree();
    if (m_shownkey.endsWith(QLatin1Char('_')) && !saving) {
        // A team that exists only in the tree keeps its form.
        if (QTreeWidgetItem *shown = shownitem()) {
            m_tvdb->setCurrentItem(shown);
            return;
        }
    }
    QTreeWidgetItem *item = m_tvdb->currentItem();
    if (!item || m_shownkey.isEmpty()) {
        // The team on show is gone; typing in its form stays until the user
        // says what becomes of it.
        if (!m_shownkey.isEmpty() && !saving && typed)
            return;
        closeall();
        return;
    }
    const QString key = item->data(0, Qt::UserRole).toString();
    if (key != m_shownkey) {
        // The team on show is gone, or a new one was saved under its number.
        if (saving || !m_teamtab->modified())
            tvdb_NodeClick(item);
        return;
    }
    bool number = false;
    const qint64 team = key.mid(1).toLongLong(&number);
    if (!number || !(key.startsWith(QLatin1Char('T')) || key.startsWith(QLatin1Char('L'))))
        return; // a continent, or a team that exists only in the tree
    if ((change.everything || change.teams.contains(team)) && (saving || !m_teamtab->modified())) {
        const TeamMode mode = key.startsWith(QLatin1Char('L')) ? NationalMode : team == 0 ? MarketMode : ClubMode;
        if (mode != MarketMode) {
            for (int slot = 0; slot < 3; ++slot)
                showtrikot(team, mode == NationalMode ? TeamTable::VereineNational : TeamTable::Vereine, slot);
        }
        showteam(team, mode);
    }
    refreshgrid(change);
}

void EditorView::refreshgrid(const Change &change)
{
    const qint64 team = m_shownkey.mid(1).toLongLong();
    bool named = change.everything || change.teams.contains(team) || change.tables.contains(QStringLiteral("kaderzeilen"));
    for (int row = 0; row < m_gridmodel->rowCount() && !named; ++row)
        named = change.players.contains(m_gridmodel->player(row).nummer);
    if (!named)
        return;
    const bool showing = !m_playertab->empty();
    const qint64 shown = m_playertab->player().nummer;
    const int row = m_gridrow;
    showspielerliste(team);
    for (int r = 0; r < m_gridmodel->rowCount() && showing && !m_gridmodel->isEmptySquad(); ++r) {
        if (m_gridmodel->player(r).nummer != shown)
            continue;
        m_gridrow = r;
        m_grid->selectRow(r);
        if ((change.everything || change.players.contains(shown)) && !m_playertab->modified())
            m_playertab->setPlayer(m_gridmodel->player(r));
        return;
    }
    // The player left the squad or is gone; typing in his form stays until
    // the user says what becomes of it.
    m_gridrow = -1;
    if ((row >= 0 || showing) && !m_playertab->modified())
        m_playertab->clear();
}

void EditorView::nodechosen(QTreeWidgetItem *item)
{
    if (!item)
        return;
    const QString key = item->data(0, Qt::UserRole).toString();
    if (m_teamtab->modified() || m_playertab->modified()) {
        // The save goes to the node on show, which the tree shows while asking.
        if (QTreeWidgetItem *shown = shownitem())
            m_tvdb->setCurrentItem(shown);
        if (m_shell.settle() == Settled::Cancelled)
            return;
    }
    // A save may have built the tree anew.
    showkey(key);
}

QTreeWidgetItem *EditorView::shownitem() const
{
    if (m_shownkey.isEmpty())
        return nullptr;
    for (QTreeWidgetItemIterator it(m_tvdb); *it; ++it)
        if ((*it)->data(0, Qt::UserRole).toString() == m_shownkey)
            return *it;
    return nullptr;
}

void EditorView::closeall()
{
    // As at the start: the editor closed, tree and empty grid open.
    anaus(NationalMode, false);
    m_frame1->setEnabled(true);
    m_teamtab->clear();
    m_playertab->clear();
    m_gridmodel->clear();
    m_gridrow = -1;
    m_shownkey.clear();
    m_shell.setshown(QString(), QString());
}

} // namespace zorbo
