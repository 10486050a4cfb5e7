#include "app/restorewindow.h"

#include "core/sizetext.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace zorbo {

namespace {

QString count(qint64 n)
{
    return n < 0 ? QStringLiteral("?") : QString::number(n);
}

QString when(const QDateTime &time)
{
    return time.toString(QStringLiteral("dd.MM.yyyy hh:mm"));
}

} // namespace

RestoreWindow::RestoreWindow(Shell &shell, QWidget *parent) : QDialog(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("frmwiederherstellung"));
    setWindowTitle(QStringLiteral("Wiederherstellungspunkte"));
    m_table = new QTableWidget(0, 5, this);
    m_table->setObjectName(QStringLiteral("lstvpunkte"));
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Datum"), QStringLiteral("Grund"), QStringLiteral("Größe"), QStringLiteral("Vereine"), QStringLiteral("Spieler")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);

    auto *hint = new QLabel(QStringLiteral("Vor jedem Lauf, der viele Zeilen ersetzt oder löscht, wird eine Kopie der Welt "
                                           "im Ordner „sicherungen“ aufbewahrt. Punkte, die Sie selbst anlegen, bleiben, "
                                           "bis Sie sie löschen."),
                            this);
    hint->setObjectName(QStringLiteral("lblhinweis"));
    hint->setWordWrap(true);
    m_restore = new QPushButton(QStringLiteral("Wiederherstellen"), this);
    m_restore->setObjectName(QStringLiteral("cmdwiederherstellen"));
    auto *make = new QPushButton(QStringLiteral("Wiederherstellungspunkt anlegen..."), this);
    make->setObjectName(QStringLiteral("cmdanlegen"));
    m_delete = new QPushButton(QStringLiteral("Löschen"), this);
    m_delete->setObjectName(QStringLiteral("cmdloeschen"));
    auto *close = new QPushButton(QStringLiteral("Schließen"), this);
    close->setObjectName(QStringLiteral("cmdschliessen"));

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(make);
    buttons->addWidget(m_delete);
    buttons->addStretch();
    buttons->addWidget(m_restore);
    buttons->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addWidget(m_table);
    layout->addLayout(buttons);
    resize(640, 360);

    connect(m_restore, &QPushButton::clicked, this, &RestoreWindow::restoreselected);
    connect(make, &QPushButton::clicked, this, &RestoreWindow::makepoint);
    connect(m_delete, &QPushButton::clicked, this, &RestoreWindow::deleteselected);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, [this] {
        m_restore->setEnabled(selected() != nullptr);
        m_delete->setEnabled(selected() != nullptr);
    });
    connect(m_table, &QTableWidget::cellDoubleClicked, this, &RestoreWindow::restoreselected);
}

void RestoreWindow::fill()
{
    m_points = restorepoints(m_shell.settings().programFolder);
    m_table->setRowCount(0);
    m_table->setRowCount(int(m_points.size()));
    for (int row = 0; row < m_points.size(); ++row) {
        const RestorePoint &p = m_points.at(row);
        const QString reason = p.byhand ? p.reason + QStringLiteral(" (von Hand)") : p.reason;
        const QStringList cells = {when(p.time), reason, sizetext(p.size), count(p.clubs), count(p.players)};
        for (int column = 0; column < cells.size(); ++column) {
            auto *cell = new QTableWidgetItem(cells.at(column));
            cell->setToolTip(p.name);
            if (column >= 2)
                cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_table->setItem(row, column, cell);
        }
    }
    m_table->clearSelection();
    m_restore->setEnabled(false);
    m_delete->setEnabled(false);
}

const RestorePoint *RestoreWindow::selected() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    if (rows.isEmpty() || rows.first().row() >= m_points.size())
        return nullptr;
    return &m_points.at(rows.first().row());
}

void RestoreWindow::makepoint()
{
    if (!m_shell.world())
        return;
    const QString title = QStringLiteral("Wiederherstellungspunkt anlegen");
    const QString name = m_shell.dialogs().text(this, title, QStringLiteral("Name des Wiederherstellungspunkts:"));
    if (name.trimmed().isEmpty())
        return;
    Result done;
    {
        const auto busy = m_shell.busy(QStringLiteral("Lege Wiederherstellungspunkt an"));
        done = m_shell.world()->makerestorepoint(name);
    }
    finish(title, done, false);
}

void RestoreWindow::deleteselected()
{
    const RestorePoint *chosen = selected();
    if (!chosen || !m_shell.world())
        return;
    const RestorePoint point = *chosen;
    const QString title = QStringLiteral("Löschen");
    if (!m_shell.dialogs().question(this, title,
                                    QStringLiteral("Den Wiederherstellungspunkt vom %1 (%2) löschen?").arg(when(point.time), point.reason)))
        return;
    finish(title, m_shell.world()->removerestorepoint(point.name), false);
}

void RestoreWindow::restoreselected()
{
    const RestorePoint *chosen = selected();
    if (!chosen || !m_shell.world())
        return;
    const RestorePoint point = *chosen;
    const QString title = QStringLiteral("Wiederherstellen");
    if (!m_shell.dialogs().question(this, title,
                                    QStringLiteral("Die Welt vom %1 (%2) wiederherstellen?\n\nDie jetzige Welt wird vorher "
                                                   "als Wiederherstellungspunkt aufbewahrt.")
                                        .arg(when(point.time), point.reason)))
        return;
    Result done;
    {
        const auto busy = m_shell.busy(QStringLiteral("Stelle die Welt vom %1 wieder her").arg(when(point.time)));
        done = m_shell.world()->restore(point.name, busy->progress());
    }
    finish(title, done, true);
}

void RestoreWindow::finish(const QString &title, const Result &done, bool tellsuccess)
{
    fill();
    m_shell.status(done.message);
    if (done.ok && tellsuccess)
        m_shell.dialogs().information(this, title, done.message);
    else if (!done.ok && !done.cancelled)
        m_shell.dialogs().warning(this, title, done.message);
}

void showrestorepoints(Shell &shell)
{
    auto *window = shell.window()->findChild<RestoreWindow *>(QStringLiteral("frmwiederherstellung"));
    if (!window)
        window = new RestoreWindow(shell, shell.window());
    window->fill();
    window->exec();
}

} // namespace zorbo
