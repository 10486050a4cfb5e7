#include "exchange/ui/applywindow.h"

#include "exchange/ui/comparewindow.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zorbo {

namespace {

const QString applyTitle = QStringLiteral("Änderungen anwenden");

} // namespace

ApplyWindow::ApplyWindow(Shell &shell, const QString &path, const ChangeFile &file, const ApplyOutcome &preview,
                         QWidget *parent)
    : QDialog(parent), m_shell(shell), m_path(path), m_file(file), m_conflicts(preview.conflicts)
{
    setObjectName(QStringLiteral("frmaenderungenanwenden"));
    setWindowTitle(applyTitle);
    auto *layout = new QVBoxLayout(this);
    QString head = QStringLiteral("„%1“, erstellt am %2 mit Zorbo Editor %3")
                       .arg(QFileInfo(path).fileName(), file.date.toString(QStringLiteral("dd.MM.yyyy hh:mm")), file.program);
    if (!file.description.isEmpty())
        head += QStringLiteral("\nBeschreibung: ") + file.description;
    const ChangeCounts counts = countchanges(file.summary);
    head += QStringLiteral("\n%1 Änderungen: %2").arg(counts.total()).arg(counts.text());
    if (preview.already == preview.changes)
        head += QStringLiteral("\nDie Änderungen sind in dieser Welt schon enthalten.");
    auto *info = new QLabel(head, this);
    info->setObjectName(QStringLiteral("lbldatei"));
    info->setWordWrap(true);
    layout->addWidget(info);
    auto *summary = new QTreeWidget(this);
    summary->setObjectName(QStringLiteral("tvzusammenfassung"));
    summary->setHeaderLabels({QStringLiteral("Änderung"), QStringLiteral("Art")});
    summary->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    summary->header()->setStretchLastSection(false);
    fillchangetree(summary, file.summary, false);
    layout->addWidget(summary, 1);

    const QString many = m_conflicts.size() == 1 ? QStringLiteral("1 Konflikt")
                                                 : QStringLiteral("%1 Konflikte").arg(m_conflicts.size());
    auto *conflictlabel = new QLabel(m_conflicts.isEmpty() ? QStringLiteral("Keine Konflikte mit dieser Welt.")
                                                           : many + QStringLiteral(" (angehakt: Datei übernehmen, sonst "
                                                                                   "bleibt diese Welt):"),
                                     this);
    conflictlabel->setObjectName(QStringLiteral("lblkonflikte"));
    layout->addWidget(conflictlabel);
    m_conflictlist = new QTreeWidget(this);
    m_conflictlist->setObjectName(QStringLiteral("tvkonflikte"));
    m_conflictlist->setHeaderLabels({QStringLiteral("Konflikt"), QStringLiteral("Vorher"), QStringLiteral("Hier"),
                                     QStringLiteral("In der Datei")});
    m_conflictlist->header()->setSectionResizeMode(QHeaderView::Stretch);
    for (qsizetype i = 0; i < m_conflicts.size(); ++i) {
        const Conflict &c = m_conflicts.at(i);
        QString text = QStringLiteral("%1: %2").arg(c.what, c.kindtext());
        if (!c.why.isEmpty())
            text += QStringLiteral(" (%1)").arg(c.why);
        // A row that is gone here can't take the file's change.
        if (c.kind == Conflict::Missing)
            text += QStringLiteral(" – die Zeile bleibt weg");
        auto *item = new QTreeWidgetItem(m_conflictlist, {text});
        item->setData(0, Qt::UserRole, qint64(i));
        if (c.kind != Conflict::Missing) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(0, Qt::Unchecked);
        }
        for (const Conflict::Value &v : c.values)
            new QTreeWidgetItem(item, {v.field, v.before, v.here, v.file});
        item->setFirstColumnSpanned(true);
        item->setExpanded(true);
    }
    m_conflictlist->setVisible(!m_conflicts.isEmpty());
    layout->addWidget(m_conflictlist, 1);

    auto *buttons = new QHBoxLayout;
    QPushButton *mine = changebutton(QStringLiteral("Meine behalten"), QStringLiteral("btnmeine"), this);
    QPushButton *theirs = changebutton(QStringLiteral("Datei übernehmen"), QStringLiteral("btndatei"), this);
    mine->setVisible(!m_conflicts.isEmpty());
    theirs->setVisible(!m_conflicts.isEmpty());
    QPushButton *go = changebutton(QStringLiteral("Anwenden"), QStringLiteral("btnanwenden"), this);
    QPushButton *cancel = changebutton(QStringLiteral("Abbrechen"), QStringLiteral("btnabbrechen"), this);
    buttons->addWidget(mine);
    buttons->addWidget(theirs);
    buttons->addStretch();
    buttons->addWidget(go);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    connect(mine, &QPushButton::clicked, this, [this] { chooseall(Choice::Mine); });
    connect(theirs, &QPushButton::clicked, this, [this] { chooseall(Choice::Theirs); });
    connect(go, &QPushButton::clicked, this, [this] { apply(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    resize(860, 640);
}

void ApplyWindow::chooseall(Choice choice)
{
    for (int i = 0; i < m_conflictlist->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = m_conflictlist->topLevelItem(i);
        if (item->flags() & Qt::ItemIsUserCheckable)
            item->setCheckState(0, choice == Choice::Theirs ? Qt::Checked : Qt::Unchecked);
    }
}

void ApplyWindow::apply()
{
    ApplyChoices choices;
    choices.all = Choice::Mine;
    for (int i = 0; i < m_conflictlist->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = m_conflictlist->topLevelItem(i);
        const Conflict &c = m_conflicts.at(item->data(0, Qt::UserRole).toLongLong());
        choices.each.insert(c.id(), item->checkState(0) == Qt::Checked ? Choice::Theirs : Choice::Mine);
    }
    ApplyOutcome done;
    {
        const auto busy = m_shell.busy(QStringLiteral("Wende die Änderungen an..."));
        done = applychangefile(*m_shell.world(), m_path, m_file, choices);
    }
    m_shell.dialogs().report(this, applyTitle, done.result.message, {}, !done.result.ok);
    if (done.result.ok)
        accept();
}

} // namespace zorbo
