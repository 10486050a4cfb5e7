#include "exchange/ui/comparewindow.h"

#include "exchange/changeapply.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zorbo {

namespace {

const QString compareTitle = QStringLiteral("Welten vergleichen");

} // namespace

QPushButton *changebutton(const QString &text, const QString &name, QWidget *parent)
{
    auto *b = new QPushButton(text, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

void fillchangetree(QTreeWidget *tree, const QList<EntityChange> &changes, bool checkable, const QString &filter)
{
    tree->clear();
    QTreeWidgetItem *country = nullptr, *club = nullptr;
    const auto group = [&](QTreeWidgetItem *parent, const QString &text) {
        auto *item = parent ? new QTreeWidgetItem(parent, {text}) : new QTreeWidgetItem(tree, {text});
        if (checkable) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
            item->setCheckState(0, Qt::Unchecked);
        }
        item->setExpanded(true);
        return item;
    };
    for (qsizetype i = 0; i < changes.size(); ++i) {
        const EntityChange &c = changes.at(i);
        const QString text = c.text();
        if (!filter.isEmpty() && !text.contains(filter, Qt::CaseInsensitive) && !c.club.contains(filter, Qt::CaseInsensitive)
            && !c.country.contains(filter, Qt::CaseInsensitive))
            continue;
        const QString countryname = c.country.isEmpty() ? QStringLiteral("(ohne Land)") : c.country;
        if (!country || country->text(0) != countryname) {
            country = group(nullptr, countryname);
            club = nullptr;
        }
        QTreeWidgetItem *parent = country;
        if (!c.club.isEmpty()) {
            if (!club || club->text(0) != c.club)
                club = group(country, c.club);
            parent = club;
        }
        auto *item = new QTreeWidgetItem(parent, {text, c.kindtext()});
        item->setData(0, Qt::UserRole, qint64(i));
        if (checkable) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(0, Qt::Unchecked);
        }
    }
}

CompareWindow::CompareWindow(Shell &shell, QWidget *parent) : QDialog(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("frmvergleich"));
    setWindowTitle(compareTitle);
    auto *layout = new QVBoxLayout(this);
    m_source = new QLabel(this);
    m_source->setObjectName(QStringLiteral("lblquelle"));
    m_source->setWordWrap(true);
    m_counts = new QLabel(this);
    m_counts->setObjectName(QStringLiteral("lblanzahl"));
    m_filter = new QLineEdit(this);
    m_filter->setObjectName(QStringLiteral("txtfilter"));
    m_filter->setPlaceholderText(QStringLiteral("Filter: Name, Verein, Land …"));
    m_filter->setClearButtonEnabled(true);
    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("tvvergleich"));
    m_list->setHeaderLabels({QStringLiteral("Änderung"), QStringLiteral("Art")});
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->header()->setStretchLastSection(false);
    layout->addWidget(m_source);
    layout->addWidget(m_counts);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    auto *buttons = new QHBoxLayout;
    QPushButton *all = changebutton(QStringLiteral("Alle anhaken"), QStringLiteral("btnalle"), this);
    QPushButton *none = changebutton(QStringLiteral("Keine"), QStringLiteral("btnkeine"), this);
    m_take = changebutton(QStringLiteral("Übernehmen"), QStringLiteral("btnuebernehmen"), this);
    QPushButton *close = changebutton(QStringLiteral("Schließen"), QStringLiteral("btnschliessen"), this);
    buttons->addWidget(all);
    buttons->addWidget(none);
    buttons->addStretch();
    buttons->addWidget(m_take);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(m_filter, &QLineEdit::textChanged, this, [this] { fill(); });
    connect(all, &QPushButton::clicked, this, [this] { tickall(true); });
    connect(none, &QPushButton::clicked, this, [this] { tickall(false); });
    connect(m_take, &QPushButton::clicked, this, [this] { takeover(); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    resize(820, 560);
}

CompareWindow::~CompareWindow() = default;

bool CompareWindow::compareworld(const QString &path)
{
    if (!m_shell.db())
        return false;
    WorldDiff diff;
    {
        const auto busy = m_shell.busy(QStringLiteral("Vergleiche die Welten..."));
        diff = diffworlds(*m_shell.db(), path);
    }
    m_scratch.reset();
    return show(std::move(diff), path, QFileInfo(path).fileName());
}

bool CompareWindow::comparegamefiles(const QString &teams, const QString &players)
{
    if (!m_shell.db())
        return false;
    m_scratch = std::make_unique<QTemporaryDir>();
    const QString scratch = m_scratch->filePath(QStringLiteral("spieldateien.mdb"));
    WorldDiff diff;
    {
        const auto busy = m_shell.busy(QStringLiteral("Lese die Spieldateien..."));
        diff = diffgamefiles(*m_shell.db(), teams, players, scratch, busy->progress());
    }
    QStringList names;
    for (const QString &f : {teams, players})
        if (!f.isEmpty())
            names << QFileInfo(f).fileName();
    m_teams = teams;
    m_players = players;
    return show(std::move(diff), scratch, names.join(QLatin1Char('/')));
}

bool CompareWindow::show(WorldDiff diff, const QString &other, const QString &label)
{
    if (!diff.result.ok) {
        m_shell.dialogs().report(m_shell.window(), compareTitle, diff.result.message, diff.findings, true);
        return false;
    }
    m_diff = std::move(diff);
    m_other = other;
    m_label = label;
    m_source->setText(QStringLiteral("Diese Welt gegen „%1“: was dort anders ist.").arg(label));
    m_counts->setText(m_diff.changes.isEmpty() ? QStringLiteral("Die beiden Welten sind gleich.")
                                               : QStringLiteral("%1 Änderungen: %2").arg(m_diff.counts.total()).arg(m_diff.counts.text()));
    fill();
    return true;
}

void CompareWindow::fill()
{
    fillchangetree(m_list, m_diff.changes, true, m_filter->text().trimmed());
    m_list->resizeColumnToContents(1);
}

void CompareWindow::tickall(bool on)
{
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        m_list->topLevelItem(i)->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
}

QList<EntityChange> CompareWindow::ticked() const
{
    QList<EntityChange> chosen;
    for (QTreeWidgetItemIterator it(m_list, QTreeWidgetItemIterator::Checked); *it; ++it) {
        const QVariant index = (*it)->data(0, Qt::UserRole);
        if (index.isValid())
            chosen << m_diff.changes.value(index.toLongLong());
    }
    return chosen;
}

void CompareWindow::takeover()
{
    const QList<EntityChange> chosen = ticked();
    if (chosen.isEmpty()) {
        m_shell.dialogs().information(this, compareTitle, QStringLiteral("Es ist keine Änderung angehakt."));
        return;
    }
    Result done;
    {
        const auto busy = m_shell.busy(QStringLiteral("Übernehme die Änderungen..."));
        done = takeoverchanges(*m_shell.world(), m_other, chosen, m_label);
    }
    m_shell.dialogs().report(this, compareTitle, done.message, {}, !done.ok);
    // What is left to take over.
    WorldDiff again = diffworlds(*m_shell.db(), m_other);
    show(std::move(again), m_other, m_label);
}

} // namespace zorbo
