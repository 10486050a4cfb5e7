// The tree's click dispatch and what it opens: the team tab, the grid and
// the player tab.
#include "core/ui/mainwindow.h"

#include "core/ui/busy.h"
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

void MainWindow::tvdb_NodeClick(QTreeWidgetItem *item)
{
    if (!item)
        return;
    const QString key = item->data(0, Qt::UserRole).toString();
    const QChar kind = key.isEmpty() ? QChar() : key.front();
    m_note.clear();
    m_status->clear();
    anaus(NationalMode, false);

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
    }
    m_tvdb->setProperty("Tag", key);
}

void MainWindow::setActionOpen(const QString &name, bool open)
{
    // An entry whose work has not come yet stays disabled whatever the mode.
    QAction *act = action(name);
    act->setProperty("Offen", open);
    act->setEnabled(open && !act->property("pending").toBool());
}

void MainWindow::anaus(TeamMode mode, bool state)
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
        setActionOpen(QStringLiteral("mnudateiitem(2)"), false);
        setActionOpen(QStringLiteral("save"), false);
    } else {
        m_teamtab->setNational(false);
        m_teamtab->cboland()->setEnabled(state);
        for (const char *name : {"mnudateiitem(1)", "mnudateiitem(2)", "open", "save"})
            setActionOpen(QLatin1String(name), state);
    }
}

void MainWindow::reportunlisted(const QString &land)
{
    m_note = QStringLiteral("Das Land »%1« steht in keiner Liste; es bleibt gespeichert, bis ein anderes gewählt wird.")
                 .arg(land);
    m_status->setText(m_note);
}

void MainWindow::showteam(qint64 nummer, TeamMode mode)
{
    if (!db())
        return;
    std::optional<TeamForm> form;
    try {
        form = readteam(*db(), nummer, mode);
    } catch (const DbError &e) {
        m_status->setText(e.text());
        return;
    }
    if (form && !m_teamtab->setForm(*form, mode))
        reportunlisted(form->land);
}

void MainWindow::showlandnew(qint64 nummer, const QString &kontinent)
{
    m_teamtab->setForm(newcountryform(nummer, kontinent), NationalMode);
    m_teamtab->cboland()->setEnabled(false);
}

void MainWindow::showteamnew(qint64 nummer, const QString &land)
{
    m_teamtab->setForm(newclubform(nummer, land), ClubMode);
    m_teamtab->cboland()->setEnabled(true);
}

void MainWindow::showspielerliste(qint64 team)
{
    m_gridrow = -1;
    if (!db())
        return;
    QList<GridPlayer> rows;
    {
        Busy busy(this, m_status, m_progress, QStringLiteral("Lade Spielerliste..."));
        m_grid->setEnabled(false);
        try {
            rows = loadspielerliste(*db(), team);
        } catch (const DbError &e) {
            m_dialogs->warning(this, QStringLiteral("Spielerliste"), e.text());
        }
        m_gridmodel->setRows(std::move(rows));
        // An empty squad's rows can't be chosen.
        m_grid->setEnabled(!m_gridmodel->isEmptySquad());
    }
    // The busy state has cleared the status bar; a note of this click stays.
    if (!m_note.isEmpty())
        m_status->setText(m_note);
}

void MainWindow::flxgrdspieler_Click(const QModelIndex &index)
{
    if (!index.isValid() || m_gridmodel->isEmptySquad())
        return;
    m_gridrow = index.row();
    m_playertab->setOpen(true);
    const GridPlayer player = m_gridmodel->player(m_gridrow);
    if (!m_playertab->setPlayer(player))
        reportunlisted(player.nation.value_or(QString()));
    if (const QList<qint64> unknown = m_playertab->unknowntalents(); !unknown.isEmpty()) {
        QStringList numbers;
        for (qint64 n : unknown)
            numbers << QString::number(n);
        m_status->setText(QStringLiteral("Der Spieler hat Talente, die der Editor nicht kennt: %1. Sie bleiben gespeichert.")
                              .arg(numbers.join(QStringLiteral(", "))));
    }
    m_tabedit->setCurrentIndex(1);
}

} // namespace zorbo
