#include "app/problemspanel.h"

#include "app/openentity.h"
#include "core/ui/shell.h"

#include <QHeaderView>
#include <QMainWindow>
#include <QTreeWidget>

namespace zorbo {

namespace {

enum Role { KeyRole = Qt::UserRole, PlayerRole };

} // namespace

ProblemsPanel::ProblemsPanel(Shell &shell, QWidget *parent) : QDockWidget(QStringLiteral("Probleme"), parent), m_shell(shell)
{
    setObjectName(QStringLiteral("dockprobleme"));
    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("lstvprobleme"));
    m_list->setHeaderHidden(true);
    m_list->setRootIsDecorated(true);
    // As wide as the history beside it: the heading and the start of each line.
    m_list->setMinimumWidth(m_list->fontMetrics().horizontalAdvance(QLatin1Char('x')) * 32);
    setWidget(m_list);
    connect(m_list, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) { open(item); });
    connect(m_list, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) { open(item); });
    connect(&m_shell, &Shell::changed, this, [this] {
        m_stale = true;
        if (isVisible())
            refresh();
    });
}

void ProblemsPanel::showEvent(QShowEvent *event)
{
    QDockWidget::showEvent(event);
    if (m_stale)
        refresh();
}

void ProblemsPanel::refresh()
{
    m_stale = false;
    const Settings &settings = m_shell.settings();
    {
        // A large world takes a while; the run can be stopped.
        const auto busy = m_shell.busy(QStringLiteral("Prüfe die Welt..."));
        const Progress progress = busy->progress();
        m_report = m_shell.run([&](Database &db) { return checkproblems(db, settings, progress); });
    }
    m_list->clear();
    if (!m_report.result.ok || m_report.problems.isEmpty()) {
        m_list->addTopLevelItem(new QTreeWidgetItem(QStringList{m_report.result.message}));
        return;
    }
    QTreeWidgetItem *group = nullptr;
    std::optional<ProblemKind> kind;
    int count = 0;
    const auto close = [&] {
        if (group)
            group->setText(0, QStringLiteral("%1 (%2)").arg(problemheading(*kind)).arg(count));
    };
    for (const Problem &p : m_report.problems) {
        if (!kind || *kind != p.kind) {
            close();
            kind = p.kind;
            count = 0;
            group = new QTreeWidgetItem(m_list);
            group->setFirstColumnSpanned(true);
            group->setExpanded(true);
        }
        ++count;
        auto *line = new QTreeWidgetItem(group, QStringList{p.where.toString()});
        line->setData(0, KeyRole, p.teamKey);
        line->setData(0, PlayerRole, p.where.player);
    }
    close();
    m_list->expandAll();
}

void ProblemsPanel::open(QTreeWidgetItem *item)
{
    if (!item || !item->parent())
        return;
    openentity(m_shell, item->data(0, KeyRole).toString(), item->data(0, PlayerRole).toLongLong());
}

ProblemsPanel *installproblems(Shell &shell)
{
    auto *window = qobject_cast<QMainWindow *>(shell.window());
    auto *panel = new ProblemsPanel(shell, window);
    if (window)
        // Beside the forms, with the history: below them it would leave the
        // player grid only a few rows.
        window->addDockWidget(Qt::RightDockWidgetArea, panel);
    panel->hide();
    shell.handle(QStringLiteral("mnutoolitem(8)"), [panel] {
        panel->show();
        panel->raise();
    });
    return panel;
}

} // namespace zorbo
