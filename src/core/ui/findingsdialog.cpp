#include "core/ui/findingsdialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zorbo {

FindingsDialog::FindingsDialog(const QString &title, const QString &text, const QList<Finding> &findings, bool failed,
                               QWidget *parent)
    : QDialog(parent), m_findings(findings)
{
    setObjectName(QStringLiteral("frmbefunde"));
    setWindowTitle(title);
    auto *layout = new QVBoxLayout(this);

    auto *head = new QHBoxLayout;
    auto *icon = new QLabel(this);
    const QStyle::StandardPixmap pixmap = failed ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation;
    icon->setPixmap(style()->standardIcon(pixmap).pixmap(32, 32));
    head->addWidget(icon, 0, Qt::AlignTop);
    auto *message = new QLabel(text, this);
    message->setObjectName(QStringLiteral("lblbefund"));
    message->setWordWrap(true);
    message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    head->addWidget(message, 1);
    layout->addLayout(head);

    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("lstbefunde"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setHeaderLabels({QStringLiteral("Datei"), QStringLiteral("Zeile"), QStringLiteral("Feld"),
                             QStringLiteral("Team"), QStringLiteral("Spieler"), QStringLiteral("Befund")});
    QList<QTreeWidgetItem *> rows;
    rows.reserve(findings.size());
    for (const Finding &f : findings) {
        auto *row = new QTreeWidgetItem;
        row->setText(0, f.file.isEmpty() ? QString() : QDir::toNativeSeparators(f.file));
        row->setText(1, f.line > 0 ? QString::number(f.line) : QString());
        row->setText(2, f.field);
        row->setText(3, f.team >= 0 ? QString::number(f.team) : QString());
        row->setText(4, f.player >= 0 ? QString::number(f.player) : QString());
        row->setText(5, f.text);
        row->setToolTip(5, f.text);
        rows << row;
    }
    m_list->addTopLevelItems(rows);
    // Columns that no finding fills stay out of the way.
    for (int c = 0; c < 5; ++c) {
        bool used = false;
        for (int r = 0; r < m_list->topLevelItemCount() && !used; ++r)
            used = !m_list->topLevelItem(r)->text(c).isEmpty();
        m_list->setColumnHidden(c, !used);
        if (used)
            m_list->resizeColumnToContents(c);
    }
    layout->addWidget(m_list, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    auto *copyButton = buttons->addButton(QStringLiteral("Kopieren"), QDialogButtonBox::ActionRole);
    copyButton->setObjectName(QStringLiteral("btnkopieren"));
    connect(copyButton, &QPushButton::clicked, this, &FindingsDialog::copy);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
    auto *shortcut = new QShortcut(QKeySequence::Copy, m_list);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, &FindingsDialog::copy);
    resize(760, 420);
}

QString FindingsDialog::copytext() const
{
    QStringList lines;
    for (int r = 0; r < m_list->topLevelItemCount(); ++r)
        if (m_list->topLevelItem(r)->isSelected())
            lines << m_findings.at(r).toString();
    if (lines.isEmpty())
        lines = findinglines(m_findings);
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void FindingsDialog::copy() const
{
    QApplication::clipboard()->setText(copytext());
}

} // namespace zorbo
