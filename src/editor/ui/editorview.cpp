#include "editor/ui/editorview.h"

#include "core/settings.h"
#include "core/teamlists.h"
#include "core/ui/dialogs.h"
#include "core/ui/keyviews.h"
#include "core/ui/shell.h"
#include "editor/facepictures.h"
#include "editor/playergrid.h"
#include "editor/ui/playertab.h"
#include "editor/ui/teamtab.h"

#include <QAction>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QStyledItemDelegate>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <optional>

namespace zorbo {

namespace {

// The upper half keeps this height and the grid takes the rest, unless the
// fonts of the system make the forms taller.
constexpr int upperHeight = 433;

QGroupBox *frame(const char *name, QWidget *parent)
{
    auto *box = new QGroupBox(parent);
    box->setObjectName(QLatin1String(name));
    return box;
}

// Paints the grid's pale rows, which the model marks.
class PaleRowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(PlayerGridModel::PaleRowRole).toBool())
            option->backgroundBrush = QColor(255, 255, 192);
    }
};

} // namespace

QIcon treeicon(int picture)
{
    switch (picture) {
    case ContinentPicture:
        return QIcon(QStringLiteral(":/icons/kontinent.png"));
    case CountryPicture:
        return QIcon(QStringLiteral(":/icons/land.png"));
    default:
        return QIcon(QStringLiteral(":/icons/verein.png"));
    }
}

EditorView::EditorView(Shell &shell, QWidget *parent) : QWidget(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("editorview"));
    buildview();
    connect(&m_shell, &Shell::opened, this, &EditorView::opened);
    connect(&m_shell, &Shell::changed, this, &EditorView::worldchanged);
    connect(&m_shell, &Shell::selectrequested, this, [this](const QString &key) {
        if (m_shell.settle() != Settled::Cancelled)
            showkey(key);
    });
    makedocuments();
    // Until a node is chosen the editor is closed; tree and empty grid are open.
    anaus(NationalMode, false);
    m_frame1->setEnabled(true);
}

EditorView::~EditorView() = default;

void EditorView::buildview()
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 4, 8, 4);

    auto *upper = new QWidget(this);
    auto *upperLayout = new QHBoxLayout(upper);
    upperLayout->setContentsMargins(0, 0, 0, 0);
    upperLayout->setSpacing(7);

    m_frame2 = frame("Frame2", upper);
    m_frame2->setFixedWidth(250);
    auto *tree = new KeyTree(m_frame2);
    m_tvdb = tree;
    m_tvdb->setObjectName(QStringLiteral("tvdb"));
    m_tvdb->setHeaderHidden(true);
    m_tvdb->setProperty("Tag", QString());
    (new QVBoxLayout(m_frame2))->addWidget(m_tvdb);

    m_frame3 = frame("Frame3", upper);
    m_tabedit = new QTabWidget(m_frame3);
    m_tabedit->setObjectName(QStringLiteral("tabedit"));
    m_teamtab = new TeamTab(m_shell.lists()->laender(), m_tabedit);
    m_playertab = new PlayerTab(m_shell.lists()->spielerlaender(), m_tabedit);
    m_tabedit->addTab(m_teamtab, QStringLiteral("Land/Verein"));
    m_tabedit->addTab(m_playertab, QStringLiteral("Spieler"));
    connect(m_teamtab, &TeamTab::saveRequested, this, &EditorView::btnteamsave_Click);
    connect(m_teamtab, &TeamTab::kitDoubleClicked, this, &EditorView::pictrikot_DblClick);
    connect(m_teamtab, &TeamTab::crestClicked, this, &EditorView::ImgXwappen_Click);
    connect(m_playertab, &PlayerTab::saveRequested, this, &EditorView::btnspielerspeichern_Click);
    connect(m_teamtab, &TeamTab::modifiedChanged, this, [this](bool modified) { marktab(0, modified); });
    connect(m_playertab, &PlayerTab::modifiedChanged, this, [this](bool modified) { marktab(1, modified); });
    connect(m_tvdb, &QTreeWidget::itemClicked, this, &EditorView::nodechosen);
    connect(tree, &KeyTree::keyChosen, this, &EditorView::nodechosen);
    (new QVBoxLayout(m_frame3))->addWidget(m_tabedit);

    upperLayout->addWidget(m_frame2);
    upperLayout->addWidget(m_frame3, 1);
    // Measured with the national team's five rows, the tallest form, so
    // that no field is squashed and nothing overlaps.
    m_teamtab->setNational(true);
    upper->setFixedHeight(std::max(upperHeight, upper->minimumSizeHint().height()));
    m_teamtab->setNational(false);

    m_frame1 = frame("Frame1", this);
    auto *grid = new KeyTable(m_frame1);
    m_grid = grid;
    m_grid->setObjectName(QStringLiteral("flxgrdspieler"));
    m_grid->setMinimumHeight(0);
    m_gridmodel = new PlayerGridModel(this);
    m_grid->setModel(m_gridmodel);
    m_grid->setItemDelegate(new PaleRowDelegate(m_grid));
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setDefaultSectionSize(20);
    // The columns beyond the tenth travel with the row but are not shown.
    for (int c = VisiblePlayerColumns; c < PlayerColumnCount; ++c)
        m_grid->setColumnHidden(c, true);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    connect(m_grid, &QTableView::clicked, this, &EditorView::flxgrdspieler_Click);
    connect(grid, &KeyTable::keyChosen, this, &EditorView::flxgrdspieler_Click);
    (new QVBoxLayout(m_frame1))->addWidget(m_grid);

    outer->addWidget(upper);
    outer->addWidget(m_frame1, 1);
}

void EditorView::opened()
{
    m_teamtab->setKitFolder(settings().kitFolder());
    m_teamtab->setCrestSource([this](int n) { return m_shell.crestimage(n); });
    m_playertab->setGesichtFolder(settings().folder(GesichtFolder));
    try {
        if (db())
            m_playertab->load_attribute(*db(), settings().folder(AttributeFolder));
    } catch (const DbError &e) {
        m_shell.dialogs().warning(m_shell.window(), QStringLiteral("Datenbank"),
                                  QStringLiteral("Die Talente lassen sich nicht lesen: %1").arg(e.text()));
    }
    mnuoptionenitem_Click(settings().trikotsatz == 0 ? 0 : 1);
}

void EditorView::showkey(const QString &key)
{
    QTreeWidgetItem *found = nullptr;
    for (QTreeWidgetItemIterator it(m_tvdb); *it && !found; ++it)
        if ((*it)->data(0, Qt::UserRole).toString() == key)
            found = *it;
    m_tvdb->setProperty("Tag", key);
    if (!found) {
        reloadandshow();
        return;
    }
    for (QTreeWidgetItem *p = found->parent(); p; p = p->parent())
        p->setExpanded(true);
    m_tvdb->setCurrentItem(found);
    tvdb_NodeClick(found);
}

void EditorView::reloadtree()
{
    {
        std::unique_ptr<BusyScope> busy;
        try {
            if (db() && db()->scalar(QStringLiteral("SELECT NUMMER FROM vereine WHERE NUMMER = 0")).isNull())
                busy = m_shell.busy(QStringLiteral("Erstelle Transfermarkt..."));
            m_tree = load_dbteam(db());
        } catch (const DbError &e) {
            m_tree = load_dbteam(nullptr);
            m_shell.dialogs().warning(m_shell.window(), QStringLiteral("Datenbank"),
                                      QStringLiteral("Die Daten lassen sich nicht lesen: %1").arg(e.text()));
        }
    }
    m_shell.lists()->fill(m_tree);
    const QString tag = m_tvdb->property("Tag").toString();
    // Countries and clubs that exist only in the tree so far stay, unless
    // they have been saved meanwhile.
    struct Provisional {
        QTreeWidgetItem *item;
        QString parent;
    };
    QList<Provisional> provisional;
    for (QTreeWidgetItemIterator it(m_tvdb); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString().endsWith(QLatin1Char('_')) && (*it)->parent()) {
            provisional.append({(*it)->clone(), (*it)->parent()->data(0, Qt::UserRole).toString()});
            provisional.last().item->takeChildren();
        }
    }
    m_tvdb->clear();
    QHash<QString, QTreeWidgetItem *> items;
    QHash<int, QIcon> icons; // each picture read once, all its nodes share it
    QTreeWidgetItem *selected = nullptr;
    for (const TreeNode &node : m_tree.nodes) {
        QTreeWidgetItem *parent = node.parent.isEmpty() ? nullptr : items.value(node.parent);
        if (!node.parent.isEmpty() && !parent)
            continue;
        auto *item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tvdb);
        item->setText(0, node.text);
        item->setData(0, Qt::UserRole, node.key);
        item->setData(0, Qt::UserRole + 1, node.picture);
        auto icon = icons.constFind(node.picture);
        if (icon == icons.cend())
            icon = icons.insert(node.picture, treeicon(node.picture));
        item->setIcon(0, *icon);
        items.insert(node.key, item);
        if (!selected && !tag.isEmpty() && node.key == tag)
            selected = item;
    }
    for (const Provisional &p : provisional) {
        QTreeWidgetItem *parent = items.value(p.parent);
        if (parent && !items.contains(p.item->data(0, Qt::UserRole).toString().chopped(1)))
            parent->addChild(p.item);
        else
            delete p.item;
    }
    if (selected) {
        for (QTreeWidgetItem *p = selected; p; p = p->parent())
            p->setExpanded(true);
        m_tvdb->setCurrentItem(selected);
    }
}

void EditorView::reloadandshow()
{
    reloadtree();
    if (QTreeWidgetItem *item = m_tvdb->currentItem())
        tvdb_NodeClick(item);
    else
        closeall();
}

void EditorView::checkallgesichter()
{
    if (!db())
        return;
    QWidget *window = m_shell.window();
    const QString title = QStringLiteral("Spielergesichter");
    const FacePictures pictures(settings().folder(GesichtFolder));
    // First only counted: nothing is written before the user agrees.
    FaceCheck check;
    // A stop by the user is told in the status bar, a failure in a box.
    const auto failed = [&] {
        if (check.result.cancelled)
            m_shell.status(check.result.message);
        else if (!check.result)
            m_shell.dialogs().warning(window, title, check.result.message);
        return !check.result;
    };
    {
        const auto busy = m_shell.busy(QStringLiteral("Überprüfe Spielergesichter..."));
        check = countgesichter(*db(), pictures, busy->progress());
    }
    if (failed())
        return;
    if (check.corrected == 0) {
        m_shell.dialogs().information(window, title, QStringLiteral("Alle Gesichter in Ordnung!"));
        return;
    }
    if (!m_shell.dialogs().question(window, title,
                                    QStringLiteral("%1 Gesichter verweisen auf Bilder, die im Ordner %2 fehlen, und "
                                                   "würden auf vorhandene Bilder gesetzt. Jetzt korrigieren?")
                                        .arg(check.corrected)
                                        .arg(QDir::toNativeSeparators(settings().folder(GesichtFolder)))))
        return;
    {
        // The grid's rows hold the old face codes; the change notice has them read again.
        const auto busy = m_shell.busy(QStringLiteral("Korrigiere Spielergesichter..."));
        check = m_shell.run([&](Database &db) { return zorbo::checkallgesichter(db, pictures, busy->progress()); }, {},
                            Step{QStringLiteral("Spielergesichter überprüft")});
    }
    if (failed())
        return;
    m_shell.dialogs().information(window, title, QStringLiteral("%1 Gesichter korrigiert!").arg(check.corrected));
}

EditorView *installeditor(Shell &shell)
{
    auto *view = new EditorView(shell);
    shell.setcentral(view);
    shell.setkits({[view](int slot, int art) { return view->choosekit(slot, art); }});
    shell.handle(QStringLiteral("mnudateiitem(0)"), [view] { view->shownew(); });
    shell.handle(QStringLiteral("mnupopupitem(0)"), [view] { view->reloadtree(); });
    for (int index = 0; index < 2; ++index)
        shell.handle(QStringLiteral("mnuoptionenitem(%1)").arg(index), [view, index] { view->mnuoptionenitem_Click(index); });
    shell.handle(QStringLiteral("mnutoolitem(1)"), [view] { view->checkallgesichter(); });
    if (QAction *popup = shell.entry(QStringLiteral("mnupopup")); popup && popup->menu()) {
        auto *tree = view->findChild<QTreeWidget *>(QStringLiteral("tvdb"));
        tree->setContextMenuPolicy(Qt::CustomContextMenu);
        QObject::connect(tree, &QWidget::customContextMenuRequested, view, [tree, menu = popup->menu()](const QPoint &pos) {
            menu->exec(tree->viewport()->mapToGlobal(pos));
        });
    }
    return view;
}

} // namespace zorbo
