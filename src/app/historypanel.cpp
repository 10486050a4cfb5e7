#include "app/historypanel.h"

#include "core/ui/shell.h"
#include "exchange/ui/changemenus.h"

#include <QApplication>
#include <QListWidget>
#include <QMenu>
#include <QPalette>

namespace zorbo {

namespace {

enum Role { IdRole = Qt::UserRole };

} // namespace

HistoryPanel::HistoryPanel(Shell &shell, QWidget *parent) : QDockWidget(QStringLiteral("Verlauf"), parent), m_shell(shell)
{
    setObjectName(QStringLiteral("dockverlauf"));
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("lstverlauf"));
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setUniformItemSizes(true);
    // Room for the date and the start of a step's text; not more, so that
    // both side panels fit beside the forms of a 1400 pixel wide window.
    m_list->setMinimumWidth(m_list->fontMetrics().horizontalAdvance(QLatin1Char('x')) * 32);
    setWidget(m_list);
    // A click, or Enter on a line reached by the arrow keys; moving through
    // the lines alone goes nowhere.
    connect(m_list, &QListWidget::itemClicked, this, &HistoryPanel::go);
    connect(m_list, &QListWidget::itemActivated, this, &HistoryPanel::go);
    // A step's own menu: its changes and those after it as a change file.
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_list, &QListWidget::customContextMenuRequested, this, [this](const QPoint &at) {
        QListWidgetItem *item = m_list->itemAt(at);
        const qint64 id = item ? item->data(IdRole).toLongLong() : 0;
        if (id <= 0)
            return;
        QMenu menu(m_list);
        menu.setObjectName(QStringLiteral("mnuverlauf"));
        connect(menu.addAction(QStringLiteral("Änderungen ab hier exportieren")), &QAction::triggered, this,
                [this, id] { exportchangesfrom(m_shell, id); });
        menu.exec(m_list->viewport()->mapToGlobal(at));
    });
    const auto follow = [this] {
        m_stale = true;
        if (isVisible())
            refresh();
    };
    connect(&m_shell, &Shell::changed, this, follow);
    connect(&m_shell, &Shell::opened, this, [this, follow] {
        if (World *world = m_shell.world())
            connect(world, &World::historychanged, this, follow);
    });
}

void HistoryPanel::showEvent(QShowEvent *event)
{
    QDockWidget::showEvent(event);
    if (m_stale)
        refresh();
}

void HistoryPanel::refresh()
{
    m_stale = false;
    const QList<HistoryStep> steps = m_shell.world() ? m_shell.world()->history() : QList<HistoryStep>();
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    auto *first = new QListWidgetItem(QStringLiteral("Beginn des Verlaufs"), m_list);
    first->setData(IdRole, qint64(0));
    QListWidgetItem *present = first;
    const QColor grey = m_list->palette().color(QPalette::Disabled, QPalette::Text);
    for (const HistoryStep &step : steps) {
        auto *line = new QListWidgetItem(
            QStringLiteral("%1  %2").arg(step.time.toString(QStringLiteral("dd.MM.yyyy hh:mm")), step.text), m_list);
        line->setData(IdRole, step.id);
        line->setToolTip(step.text);
        if (step.undone)
            line->setForeground(grey);
        else
            present = line;
    }
    QFont bold = present->font();
    bold.setBold(true);
    present->setFont(bold);
    m_list->setCurrentItem(present);
    present->setSelected(true);
    m_list->scrollToItem(present);
    m_present = m_list->row(present);
}

void HistoryPanel::go(QListWidgetItem *item)
{
    // With activation on a single click, the click and the activation both
    // come; the second finds its line gone with the list filled anew.
    if (!item)
        return;
    const int row = m_list->row(item);
    if (row == m_present)
        return;
    const qint64 id = item->data(IdRole).toLongLong();
    movehistory(m_shell, QStringLiteral("Verlauf"),
                row < m_present ? QStringLiteral("Gehe im Verlauf zurück") : QStringLiteral("Gehe im Verlauf vor"),
                [id](World &world, const Progress &progress) { return world.gotostep(id, progress); });
    // Also after a refusal, the mark goes back to where the world stands.
    refresh();
}

} // namespace zorbo
