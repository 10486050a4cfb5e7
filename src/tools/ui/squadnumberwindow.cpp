#include "tools/ui/squadnumberwindow.h"

#include "core/fieldcheck.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>

namespace zorbo {

SquadNumberWindow::SquadNumberWindow(Shell &shell, QWidget *parent)
    : TeamCheckWindow(shell, parent, QStringLiteral("frmrueckennummer"), QStringLiteral("Rückennummer"),
                      QStringLiteral("Fehlerhafte Vereine suchen"))
{
    m_teams = new QComboBox(this);
    m_teams->setObjectName(QStringLiteral("cbovereine"));
    m_players = new QListWidget(this);
    m_players->setObjectName(QStringLiteral("lstspieler"));
    m_number = new QLineEdit(this);
    m_number->setObjectName(QStringLiteral("txtnrneu"));
    // A validator, not a maximum length, so that a number set by code stays whole.
    m_number->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("-?[0-9]{0,9}")), m_number));
    m_number->setEnabled(false);
    m_update = new QPushButton(QStringLiteral("Nummer speichern"), this);
    m_update->setObjectName(QStringLiteral("btnupdate"));
    m_update->setEnabled(false);
    // Enter in the number saves it.
    m_update->setDefault(true);

    QGridLayout *grid = this->grid();
    grid->addWidget(m_teams, 1, 0, 1, 3);
    grid->addWidget(m_players, 2, 0, 1, 3);
    grid->addWidget(new QLabel(QStringLiteral("neue Nr."), this), 3, 0);
    grid->addWidget(m_number, 3, 1);
    grid->addWidget(m_update, 3, 2);
    resize(360, 440);

    connect(m_start, &QPushButton::clicked, this, &SquadNumberWindow::search);
    connect(m_teams, &QComboBox::activated, this, &SquadNumberWindow::showteam);
    // One click (or the arrow keys) picks the player; his number stands
    // selected, so that typing replaces it.
    connect(m_players, &QListWidget::currentRowChanged, this, &SquadNumberWindow::edit);
    connect(m_update, &QPushButton::clicked, this, &SquadNumberWindow::save);
}

void SquadNumberWindow::search()
{
    m_teams->clear();
    m_players->clear();
    m_lines.clear();
    const auto teams = TeamCheckWindow::search(
        [](Database &db, const Progress &progress) { return clubswithrepeats(db, progress); });
    if (!teams || teams->isEmpty())
        return;
    for (const NamedTeam &t : *teams)
        m_teams->addItem(t.name, t.nummer);
    m_teams->setCurrentIndex(0);
    showteam();
}

void SquadNumberWindow::showteam()
{
    m_players->clear();
    m_lines.clear();
    while (m_teams->currentIndex() >= 0) {
        try {
            m_lines = squadlines(*m_shell.db(), m_teams->currentData().toLongLong());
        } catch (const DbError &e) {
            m_shell.dialogs().warning(this, windowTitle(), e.text());
            return;
        }
        if (repeatshown(m_lines))
            break;
        m_lines.clear();
        m_teams->removeItem(m_teams->currentIndex());
        m_teams->setCurrentIndex(m_teams->count() > 0 ? 0 : -1);
    }
    for (const SquadLine &line : std::as_const(m_lines)) {
        auto *item = new QListWidgetItem(line.text(), m_players);
        item->setData(Qt::UserRole, line.player);
    }
}

void SquadNumberWindow::edit()
{
    const int row = m_players->currentRow();
    const bool picked = row >= 0 && row < m_lines.size();
    m_number->setEnabled(picked);
    m_update->setEnabled(picked);
    if (!picked) {
        m_number->clear();
        return;
    }
    m_start->setEnabled(false);
    m_number->setText(QString::number(m_lines[row].number));
    m_number->setFocus();
    m_number->selectAll();
}

void SquadNumberWindow::save()
{
    m_number->setEnabled(false);
    m_update->setEnabled(false);
    const QListWidgetItem *item = m_players->currentItem();
    if (item) {
        const qint64 player = item->data(Qt::UserRole).toLongLong();
        const qint64 number = parsewholenumber(m_number->text()).value_or(0);
        const Result done = m_shell.run([&](Database &db) { return setsquadnumber(db, player, number); }, {},
                                         squadnumberstep(player, number));
        // A number of 0 or below is not saved, as before; the status bar says so.
        m_shell.status(done.message);
        if (!done.ok && number > 0)
            m_shell.dialogs().warning(this, windowTitle(), done.message);
    }
    m_start->setEnabled(true);
    m_teams->setEnabled(true);
    m_players->setEnabled(true);
    showteam();
}

} // namespace zorbo
