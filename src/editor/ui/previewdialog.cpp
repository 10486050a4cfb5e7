#include "editor/ui/previewdialog.h"

#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "editor/ui/changelist.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zorbo {

PreviewDialog::PreviewDialog(Shell &shell, QWidget *parent) : QDialog(parent), m_shell(shell)
{
    m_list = new ChangeList(this);
    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("lblvorschau"));
    m_summary->setWordWrap(true);
}

void PreviewDialog::arrange(QLayout *above, QWidget *below)
{
    auto *buttons = new QDialogButtonBox(this);
    m_apply = buttons->addButton(QStringLiteral("Übernehmen"), QDialogButtonBox::AcceptRole);
    m_apply->setObjectName(QStringLiteral("btnuebernehmen"));
    buttons->addButton(QStringLiteral("Abbrechen"), QDialogButtonBox::RejectRole)->setObjectName(QStringLiteral("btnabbrechen"));
    auto *layout = new QVBoxLayout(this);
    if (above)
        layout->addLayout(above);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_summary);
    if (below)
        layout->addWidget(below);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &PreviewDialog::apply);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void PreviewDialog::showpreview(const Result &result, const QList<PlayerChange> &changes, qint64 changed, const QString &summary)
{
    m_list->show(changes);
    m_summary->setText(result.ok ? summary : result.message);
    m_apply->setEnabled(result.ok && changed > 0);
}

bool PreviewDialog::applicable() const
{
    return m_apply->isEnabled();
}

void PreviewDialog::finish(const Result &result, const QList<Finding> &findings)
{
    if (!result.ok) {
        m_shell.dialogs().report(this, windowTitle(), result.message, findings, true);
        return;
    }
    m_shell.status(result.message);
    accept();
}

} // namespace zorbo
