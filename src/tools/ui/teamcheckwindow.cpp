#include "tools/ui/teamcheckwindow.h"

#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QGridLayout>
#include <QPushButton>

namespace zorbo {

TeamCheckWindow::TeamCheckWindow(Shell &shell, QWidget *parent, const QString &name, const QString &title,
                                 const QString &start)
    : QDialog(parent), m_shell(shell)
{
    setObjectName(name);
    setWindowTitle(title);
    m_start = new QPushButton(start, this);
    m_start->setObjectName(QStringLiteral("btnstart"));
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));
    // The keyboard may land here after a save; Enter must not close the window.
    cancel->setAutoDefault(false);
    m_grid = new QGridLayout(this);
    m_grid->addWidget(m_start, 0, 0, 1, 3);
    m_grid->addWidget(cancel, 4, 2);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

std::optional<QList<NamedTeam>> TeamCheckWindow::search(const std::function<QList<NamedTeam>(Database &, const Progress &)> &find)
{
    m_start->setEnabled(false);
    std::optional<QList<NamedTeam>> found;
    QString failed;
    try {
        const auto busy = m_shell.busy(QStringLiteral("Suche Vereine..."));
        found = find(*m_shell.db(), busy->progress());
    } catch (const DbError &e) {
        failed = QStringLiteral("Die Suche ist fehlgeschlagen: %1").arg(e.text());
    } catch (const Cancelled &) {
        failed = QStringLiteral("Die Suche wurde abgebrochen; es wurden nicht alle Vereine geprüft.");
    }
    m_shell.status(failed);
    if (!found)
        m_shell.dialogs().warning(this, windowTitle(), failed);
    else if (found->isEmpty())
        m_shell.dialogs().information(this, windowTitle(), QStringLiteral("Keine Fehler vorhanden"));
    m_start->setEnabled(true);
    return found;
}

} // namespace zorbo
