#include "anstoss/freeplayers.h"
#include "anstoss/ui/a4lists.h"
#include "anstoss/ui/workbench.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>

namespace zorbo {

namespace {

const char *const popupcaptions[11] = {"automatische Spielerauswahl",
                                       "-",
                                       "Alle Spieler auswählen (Strg+A)",
                                       "keine Auswahl (Strg+D)",
                                       "Auswahl umkehren (Strg+U)",
                                       "-",
                                       "Kopieren in Spielerliste (Strg+C)",
                                       "Spieler aus Liste entfernen (Entf)",
                                       "Spieler in 'Freie Spieler' kopieren",
                                       "-",
                                       "Popup schliessen"};

void fillitem(QTreeWidgetItem *item, const ListEntry &e)
{
    item->setText(0, e.text);
    item->setText(1, e.position);
    item->setText(2, e.staerke);
    item->setText(3, QString::number(e.art));
    item->setTextAlignment(1, Qt::AlignCenter);
    item->setTextAlignment(2, Qt::AlignCenter);
    item->setIcon(0, QIcon(a4picture(4 - e.art)));
    item->setData(0, Qt::UserRole, e.key);
}

} // namespace

QWidget *Workbench::playerpage()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *lists = new QHBoxLayout;
    auto *left = new QVBoxLayout;
    m_tabspieler = new QTabBar(page);
    m_tabspieler->setObjectName(QStringLiteral("tabspieler"));
    m_tabspieler->addTab(QStringLiteral("AnstossExporter"));
    m_tabspieler->addTab(QStringLiteral("Editor"));
    left->addWidget(m_tabspieler);
    m_fraexporter = new QWidget(page);
    m_fraexporter->setObjectName(QStringLiteral("fraexporter"));
    m_fraeditor = new QWidget(page);
    m_fraeditor->setObjectName(QStringLiteral("fraeditor"));
    m_lstvimport = new A4List(QStringLiteral("lstvimport"), true, m_fraexporter);
    m_lstveditor = new A4List(QStringLiteral("lstveditor"), true, m_fraeditor);
    (new QVBoxLayout(m_fraexporter))->addWidget(m_lstvimport);
    (new QVBoxLayout(m_fraeditor))->addWidget(m_lstveditor);
    left->addWidget(m_fraexporter);
    left->addWidget(m_fraeditor);
    m_fraeditor->hide();
    connect(m_tabspieler, &QTabBar::currentChanged, this, [this](int tab) {
        m_fraexporter->setVisible(tab == 0);
        m_fraeditor->setVisible(tab == 1);
    });
    lists->addLayout(left);
    auto *frame8 = new QGroupBox(QStringLiteral("Spielerliste"), page);
    frame8->setObjectName(QStringLiteral("Frame8"));
    m_lstveditornew = new A4List(QStringLiteral("lstveditornew"), false, frame8);
    (new QVBoxLayout(frame8))->addWidget(m_lstveditornew);
    lists->addWidget(frame8);
    layout->addLayout(lists);
    connect(m_lstveditornew, &A4List::dropped, this, &Workbench::dropfrom);
    for (A4List *list : {m_lstvimport, m_lstveditor, m_lstveditornew}) {
        list->installEventFilter(this);
        connect(list, &QWidget::customContextMenuRequested, this, [this, list](const QPoint &at) {
            popupfor(list)->popup(list->viewport()->mapToGlobal(at));
        });
    }

    auto *options = new QGroupBox(QStringLiteral("Speicheroptionen"), page);
    auto *of = new QHBoxLayout(options);
    m_chkimport[3] = new QCheckBox(QStringLiteral("Spielerdaten"), options);
    m_chkimport[3]->setObjectName(QStringLiteral("chkimport(3)"));
    connect(m_chkimport[3], &QCheckBox::clicked, this, [this] { chkimport_Click(3); });
    of->addWidget(m_chkimport[3]);
    m_btnspielersave = new QPushButton(QStringLiteral("Spieler speichern"), options);
    m_btnspielersave->setObjectName(QStringLiteral("btnspielersave"));
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), options);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));
    of->addWidget(m_btnspielersave);
    of->addWidget(cancel);
    connect(m_btnspielersave, &QPushButton::clicked, this, &Workbench::btnspielersave_Click);
    connect(cancel, &QPushButton::clicked, this, &Workbench::btnabbrechen_Click);
    layout->addWidget(options);
    return page;
}

A4List *Workbench::listof(SquadBuilder::Source source) const
{
    return source == SquadBuilder::Import ? m_lstvimport : m_lstveditor;
}

QList<int> Workbench::selectedrows(QTreeWidget *list) const
{
    QList<int> rows;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        if (list->topLevelItem(i)->isSelected())
            rows << i;
    }
    return rows;
}

void Workbench::refreshlists()
{
    for (auto source : {SquadBuilder::Import, SquadBuilder::Editor}) {
        A4List *list = listof(source);
        const QList<ListEntry> &entries = m_builder.list(source);
        bool same = list->topLevelItemCount() == entries.size();
        for (int i = 0; same && i < entries.size(); ++i)
            same = list->topLevelItem(i)->data(0, Qt::UserRole).toString() == entries[i].key
                   && list->topLevelItem(i)->text(0) == entries[i].text;
        if (!same) {
            list->clear();
            for (const ListEntry &e : entries)
                fillitem(new QTreeWidgetItem(list), e);
        }
        // Ghosted entries show dimmed and can't be chosen.
        for (int i = 0; i < entries.size(); ++i) {
            QTreeWidgetItem *item = list->topLevelItem(i);
            if (entries[i].ghosted)
                item->setSelected(false);
            item->setFlags(entries[i].ghosted ? Qt::NoItemFlags
                                              : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled);
        }
    }
    m_lstveditornew->clear();
    for (const ListEntry &e : m_builder.squad())
        fillitem(new QTreeWidgetItem(m_lstveditornew), e);
    updatesave();
}

void Workbench::updatesave()
{
    m_btnspielersave->setEnabled(m_builder.squad().size() == squadSize);
}

QMenu *Workbench::popupfor(QTreeWidget *list)
{
    delete m_popup;
    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("mnupopup"));
    const bool import = list == m_lstvimport;
    const bool squad = list == m_lstveditornew;
    QTreeWidgetItem *current = list->currentItem();
    for (int i = 0; i < 11; ++i) {
        QAction *a = nullptr;
        if (i == 0) {
            QMenu *sub = m_popup->addMenu(QString::fromUtf8(popupcaptions[0]));
            sub->setObjectName(QStringLiteral("mnupopup_item(0)"));
            sub->addAction(QStringLiteral("Zufallssystem"), this, [this] { mnupopup_selbest_Click(0); })
                ->setObjectName(QStringLiteral("mnupopup_selbest(0)"));
            for (int s = 0; s < 10; ++s)
                sub->addAction(systemcaption(s), this, [this, s] { mnupopup_selbest_Click(s + 1); })
                    ->setObjectName(QStringLiteral("mnupopup_selbest(%1)").arg(s + 1));
            a = sub->menuAction();
        } else if (popupcaptions[i][0] == '-') {
            a = m_popup->addSeparator();
        } else {
            a = m_popup->addAction(QString::fromUtf8(popupcaptions[i]), this,
                                   [this, list, i] { mnupopup_item_Click(list, i); });
            a->setObjectName(QStringLiteral("mnupopup_item(%1)").arg(i));
        }
        bool shown = true;
        if (i == 0 || i == 1)
            shown = import;
        else if (i == 6)
            shown = !squad;
        else if (i == 7)
            shown = squad;
        else if (i == 8)
            shown = !squad;
        a->setVisible(shown);
        if (i == 6)
            a->setEnabled(!current || (current->flags() & Qt::ItemIsEnabled));
        if (i == 8)
            a->setEnabled(import);
    }
    return m_popup;
}

void Workbench::mnupopup_item_Click(QTreeWidget *list, int index)
{
    const bool squad = list == m_lstveditornew;
    const SquadBuilder::Source source = list == m_lstvimport ? SquadBuilder::Import : SquadBuilder::Editor;
    switch (index) {
    case 2:
    case 3:
    case 4:
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            QTreeWidgetItem *item = list->topLevelItem(i);
            if (item->flags() & Qt::ItemIsSelectable)
                item->setSelected(index == 2 ? true : index == 3 ? false : !item->isSelected());
        }
        break;
    case 6:
        if (!squad) {
            m_builder.copy(source, selectedrows(list));
            refreshlists();
        }
        break;
    case 7:
        if (squad) {
            m_builder.remove(selectedrows(list));
            refreshlists();
        }
        break;
    case 8: {
        if (list != m_lstvimport || !m_shell.db())
            break;
        const bool freerun = m_nummer == -1;
        QList<int> rows;
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            if (!m_builder.list(SquadBuilder::Import)[i].ghosted && (freerun || list->topLevelItem(i)->isSelected()))
                rows << i;
        }
        if (rows.isEmpty())
            break;
        QList<int> indexes;
        for (int r : rows)
            indexes << int(m_builder.list(SquadBuilder::Import)[r].id);
        AnstossResult r;
        {
            const auto busy = m_shell.busy(QStringLiteral("Speichere Freie Spieler..."));
            const Progress progress = busy->progress();
            r = m_shell.run([&](Database &db) { return runfreeplayers(db, m_file, indexes, progress); }, {},
                            freeplayersstep(m_file));
        }
        if (!r.ok()) {
            if (r.result.cancelled)
                m_shell.status(r.result.message);
            else
                m_shell.dialogs().warning(this, QStringLiteral("Freie Spieler"), r.result.message);
            break;
        }
        m_builder.ghost(SquadBuilder::Import, rows);
        refreshlists();
        if (freerun)
            m_shell.status(r.result.message);
        break;
    }
    default:
        break;
    }
    updatesave();
}

void Workbench::mnupopup_selbest_Click(int index)
{
    m_builder.autochoose(index == 0 ? randomsystem() : index - 1);
    for (int i = 0; i < m_lstvimport->topLevelItemCount(); ++i)
        m_lstvimport->topLevelItem(i)->setSelected(false);
    refreshlists();
}

void Workbench::dropfrom(const QString &source)
{
    QTreeWidget *list = source == m_lstvimport->objectName() ? m_lstvimport
                        : source == m_lstveditor->objectName() ? m_lstveditor
                                                                : nullptr;
    if (list)
        mnupopup_item_Click(list, 6);
}

void Workbench::btnspielersave_Click()
{
    const QList<SquadEntry> squad = m_builder.entries();
    m_saving = true;
    const AnstossResult r = m_shell.run(
        [&](Database &db) {
            const auto busy = m_shell.busy(QStringLiteral("Speichere Spieler..."));
            return saveimportplayers(db, m_aet, m_nummer, squad, busy->progress());
        },
        {}, importplayersstep(m_nummer, m_file));
    m_saving = false;
    if (!r.ok() && !r.result.cancelled)
        m_shell.dialogs().warning(this, QStringLiteral("Spieler speichern"), r.result.message);
    else
        m_shell.status(r.result.message);
}

bool Workbench::eventFilter(QObject *watched, QEvent *event)
{
    auto *list = qobject_cast<QTreeWidget *>(watched);
    if (!list || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool squad = list == m_lstveditornew;
    int command = -1;
    if (key->modifiers() == Qt::ControlModifier) {
        switch (key->key()) {
        case Qt::Key_A: command = 2; break;
        case Qt::Key_D: command = 3; break;
        case Qt::Key_U: command = 4; break;
        case Qt::Key_C: command = squad ? -1 : 6; break;
        default: break;
        }
    } else if (key->modifiers() == Qt::NoModifier && key->key() == Qt::Key_Delete && squad) {
        command = 7;
    }
    if (command < 0)
        return QDialog::eventFilter(watched, event);
    mnupopup_item_Click(list, command);
    return true;
}

} // namespace zorbo
