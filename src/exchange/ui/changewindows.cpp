#include "exchange/ui/changewindows.h"

#include "core/fieldcheck.h"
#include "core/settings.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QDialogButtonBox>
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
const QString applyTitle = QStringLiteral("Änderungen anwenden");
const QString exportTitle = QStringLiteral("Änderungen exportieren");
const QString changeFilter = QStringLiteral("Änderungsdatei (*.zae)");

QPushButton *button(const QString &text, const QString &name, QWidget *parent)
{
    auto *b = new QPushButton(text, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

// The changes as a tree: country, club, change; each change carries its
// index in the list. checkable: a tick per change (a group ticks its own).
void filltree(QTreeWidget *tree, const QList<EntityChange> &changes, bool checkable, const QString &filter = {})
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

} // namespace

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
    QPushButton *all = button(QStringLiteral("Alle anhaken"), QStringLiteral("btnalle"), this);
    QPushButton *none = button(QStringLiteral("Keine"), QStringLiteral("btnkeine"), this);
    m_take = button(QStringLiteral("Übernehmen"), QStringLiteral("btnuebernehmen"), this);
    QPushButton *close = button(QStringLiteral("Schließen"), QStringLiteral("btnschliessen"), this);
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
    filltree(m_list, m_diff.changes, true, m_filter->text().trimmed());
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
    filltree(summary, file.summary, false);
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
    QPushButton *mine = button(QStringLiteral("Meine behalten"), QStringLiteral("btnmeine"), this);
    QPushButton *theirs = button(QStringLiteral("Datei übernehmen"), QStringLiteral("btndatei"), this);
    mine->setVisible(!m_conflicts.isEmpty());
    theirs->setVisible(!m_conflicts.isEmpty());
    QPushButton *go = button(QStringLiteral("Anwenden"), QStringLiteral("btnanwenden"), this);
    QPushButton *cancel = button(QStringLiteral("Abbrechen"), QStringLiteral("btnabbrechen"), this);
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

namespace {

void exportto(Shell &shell, const std::function<ChangeFileRead(Database &db, const QString &description)> &make)
{
    const QString description = shell.dialogs().text(shell.window(), exportTitle,
                                                     QStringLiteral("Beschreibung der Änderungen (kann leer bleiben):"));
    int filter = 0;
    const QString path = shell.savefile(FileKind::Game, exportTitle, QStringLiteral("aenderungen.zae"), {changeFilter}, &filter);
    if (path.isEmpty())
        return;
    Result written;
    {
        const auto busy = shell.busy(QStringLiteral("Schreibe die Änderungsdatei..."));
        const ChangeFileRead made = make(*shell.db(), description);
        if (!made.result.ok)
            written = made.result;
        else if (made.file.changeset.isEmpty())
            written = Result::failure(QStringLiteral("Es gibt keine Änderungen; es wurde keine Datei geschrieben."));
        else
            written = writechangefile(path, made.file);
    }
    shell.dialogs().report(shell.window(), exportTitle, written.message, {}, !written.ok);
}

void exportchanges(Shell &shell)
{
    if (!shell.db())
        return;
    const int how = shell.dialogs().choose(shell.window(), exportTitle, QStringLiteral("Welche Änderungen sollen in die Datei?"),
                                           {QStringLiteral("Ab einem Schritt des Verlaufs"),
                                            QStringLiteral("Unterschied zu einer anderen Welt"), QStringLiteral("Abbrechen")});
    if (how == 0) {
        const QList<HistoryStep> steps = shell.world()->history();
        if (steps.isEmpty()) {
            shell.dialogs().information(shell.window(), exportTitle, QStringLiteral("Der Verlauf ist leer."));
            return;
        }
        const QString typed = shell.dialogs().text(shell.window(), exportTitle,
                                                   QStringLiteral("Ab Schritt (%1 bis %2, siehe Verlauf):")
                                                       .arg(steps.first().id)
                                                       .arg(steps.last().id));
        if (typed.isEmpty())
            return;
        const std::optional<qint64> step = parsewholenumber(typed.trimmed());
        if (!step || *step < 1) {
            shell.dialogs().warning(shell.window(), exportTitle, QStringLiteral("„%1“ ist keine Nummer eines Schritts.").arg(typed));
            return;
        }
        exportchangesfrom(shell, *step);
    } else if (how == 1) {
        int filter = 0;
        const QString other = shell.openfile(FileKind::Game, QStringLiteral("Andere Welt"), QStringLiteral("zorbo.mdb"),
                                             {QStringLiteral("Welt (*.mdb)")}, &filter);
        if (other.isEmpty())
            return;
        exportto(shell, [&](Database &db, const QString &description) { return changesagainst(db, other, description); });
    }
}

void applychanges(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString path = shell.openfile(FileKind::Game, applyTitle, {}, {changeFilter}, &filter);
    if (path.isEmpty())
        return;
    const ChangeFileRead read = readchangefile(path);
    if (!read.result.ok) {
        shell.dialogs().warning(shell.window(), applyTitle, read.result.message);
        return;
    }
    const ApplyOutcome preview = previewchanges(*shell.db(), read.file.changeset);
    if (!preview.result.ok) {
        shell.dialogs().warning(shell.window(), applyTitle, preview.result.message);
        return;
    }
    ApplyWindow window(shell, path, read.file, preview, shell.window());
    window.exec();
}

void compare(Shell &shell)
{
    if (!shell.db())
        return;
    const int how = shell.dialogs().choose(shell.window(), compareTitle, QStringLiteral("Womit soll diese Welt verglichen werden?"),
                                           {QStringLiteral("Andere Welt (zorbo.mdb)"),
                                            QStringLiteral("Spieldateien (1_tm.cfg, 1_sp.cfg)"), QStringLiteral("Abbrechen")});
    int filter = 0;
    if (how == 0) {
        const QString other = shell.openfile(FileKind::Game, QStringLiteral("Andere Welt"), QStringLiteral("zorbo.mdb"),
                                             {QStringLiteral("Welt (*.mdb)")}, &filter);
        if (other.isEmpty())
            return;
        CompareWindow window(shell, shell.window());
        if (window.compareworld(other))
            window.exec();
    } else if (how == 1) {
        const QString folder = shell.settings().folder(ZorboconfigFolder);
        const QString teams = shell.openfile(FileKind::Game, QStringLiteral("Teamdatei (1_tm.cfg)"), folder + QStringLiteral("1_tm.cfg"),
                                             {QStringLiteral("Config (Zorbo) (1_tm.cfg *.cfg)")}, &filter);
        const QString players = shell.openfile(FileKind::Game, QStringLiteral("Spielerdatei (1_sp.cfg)"),
                                               folder + QStringLiteral("1_sp.cfg"),
                                               {QStringLiteral("Config (Zorbo) (1_sp.cfg *.cfg)")}, &filter);
        if (teams.isEmpty() && players.isEmpty())
            return;
        opencomparison(shell, teams, players);
    }
}

} // namespace

void opencomparison(Shell &shell, const QString &teams, const QString &players)
{
    if (!shell.db())
        return;
    CompareWindow window(shell, shell.window());
    if (window.comparegamefiles(teams, players))
        window.exec();
}

void exportchangesfrom(Shell &shell, qint64 step)
{
    if (!shell.db())
        return;
    exportto(shell, [step](Database &db, const QString &description) { return changessince(db, step, description); });
}

void installchanges(Shell &shell)
{
    shell.handle(QStringLiteral("mnudateiitem(8)"), [&shell] { exportchanges(shell); });
    shell.handle(QStringLiteral("mnudateiitem(9)"), [&shell] { applychanges(shell); });
    shell.handle(QStringLiteral("mnutoolitem(9)"), [&shell] { compare(shell); });
}

} // namespace zorbo
