#include "core/ui/mainwindow.h"

#include "core/defaultfolders.h"
#include "core/gamedb.h"
#include "core/teamlists.h"
#include "resources/crestswitch.h"
#include "editor/facepictures.h"
#include "editor/playergrid.h"
#include "editor/ui/playertab.h"
#include "editor/ui/teamtab.h"
#include "core/ui/aboutdialog.h"
#include "core/ui/busy.h"
#include "core/ui/dialogs.h"
#include "core/ui/keyviews.h"
#include "generated/version.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QStatusBar>
#include <QStyledItemDelegate>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>
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

MainWindow::MainWindow(const QString &programFolder, Dialogs *dialogs)
    : m_programFolder(programFolder), m_dialogs(dialogs)
{
    setObjectName(QStringLiteral("frmmain"));
    m_lists = new TeamLists(this);
    buildwindow();
    buildmenus();
    buildtoolbar();
    // The drawn pictures of ilsttoolbar replace the style's stand-ins.
    const std::pair<const char *, const char *> toolbarIcons[] = {
        {"new", "neu"},
        {"open", "oeffnen"},
        {"save", "speichern"},
        {"impconfig", "importconfig"},
        {"expconfig", "exportconfig"},
        {"impanstoss4", "importanstoss"},
        {"trikotoriginal", "trikotoriginal"},
        {"trikotzorbode", "trikotzorbode"},
    };
    for (const auto &[key, file] : toolbarIcons)
        if (QAction *act = action(QLatin1String(key)))
            act->setIcon(QIcon(QStringLiteral(":/icons/%1.png").arg(QLatin1String(file))));
    QAction *checkfaces = action(QStringLiteral("mnutoolitem(1)"));
    checkfaces->setEnabled(true);
    checkfaces->setProperty("pending", false);
    connect(checkfaces, &QAction::triggered, this, &MainWindow::checkallgesichter);
    connectexchange();
    // Until a node is chosen the editor is closed; tree and empty grid are open.
    anaus(NationalMode, false);
    m_frame1->setEnabled(true);
}

MainWindow::~MainWindow() = default;

void MainWindow::buildwindow()
{
    auto *central = new QWidget(this);
    auto *outer = new QVBoxLayout(central);
    outer->setContentsMargins(8, 4, 8, 4);

    auto *upper = new QWidget(central);
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
    m_teamtab = new TeamTab(m_lists->laender(), m_tabedit);
    m_playertab = new PlayerTab(m_lists->spielerlaender(), m_tabedit);
    m_tabedit->addTab(m_teamtab, QStringLiteral("Land/Verein"));
    m_tabedit->addTab(m_playertab, QStringLiteral("Spieler"));
    connect(m_teamtab, &TeamTab::saveRequested, this, &MainWindow::btnteamsave_Click);
    connect(m_teamtab, &TeamTab::kitDoubleClicked, this, &MainWindow::pictrikot_DblClick);
    connect(m_teamtab, &TeamTab::crestClicked, this, &MainWindow::ImgXwappen_Click);
    connect(m_playertab, &PlayerTab::saveRequested, this, &MainWindow::btnspielerspeichern_Click);
    connect(m_tvdb, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) { tvdb_NodeClick(item); });
    connect(tree, &KeyTree::keyChosen, this, [this](QTreeWidgetItem *item) { tvdb_NodeClick(item); });
    (new QVBoxLayout(m_frame3))->addWidget(m_tabedit);

    upperLayout->addWidget(m_frame2);
    upperLayout->addWidget(m_frame3, 1);
    // Measured with the national team's five rows, the tallest form, so
    // that no field is squashed and nothing overlaps.
    m_teamtab->setNational(true);
    upper->setFixedHeight(std::max(upperHeight, upper->minimumSizeHint().height()));
    m_teamtab->setNational(false);

    m_frame1 = frame("Frame1", central);
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
    connect(m_grid, &QTableView::clicked, this, &MainWindow::flxgrdspieler_Click);
    connect(grid, &KeyTable::keyChosen, this, &MainWindow::flxgrdspieler_Click);
    (new QVBoxLayout(m_frame1))->addWidget(m_grid);

    outer->addWidget(upper);
    outer->addWidget(m_frame1, 1);
    setCentralWidget(central);

    auto *bar = new QStatusBar(this);
    bar->setObjectName(QStringLiteral("stbstatus"));
    m_status = new QLabel(bar);
    m_status->setObjectName(QStringLiteral("stbstatus(1)"));
    m_progress = new QProgressBar(bar);
    m_progress->setObjectName(QStringLiteral("prostatus"));
    m_progress->setRange(0, 100);
    m_progress->setValue(100);
    m_progress->setTextVisible(false);
    m_programLabel = new QLabel(bar);
    m_programLabel->setObjectName(QStringLiteral("stbstatus(3)"));
    bar->addWidget(m_status, 1);
    bar->addWidget(m_progress, 1);
    bar->addWidget(m_programLabel, 1);
    setStatusBar(bar);
}

QAction *MainWindow::action(const QString &objectName) const
{
    return m_actions.value(objectName);
}

void MainWindow::formload()
{
    QString message;
    m_settings = loadsettings(m_programFolder, &message);
    if (!message.isEmpty())
        m_dialogs->warning(this, QString(), message);
    // Missing pictures never stop the start; the status bar says what is missing.
    if (const QStringList missing = unpackdefaults(m_settings); !missing.isEmpty())
        m_status->setText(missing.first());
    // A crest import cut off by a crash is finished or dropped, so the
    // crests are all old or all new before any is shown.
    if (const Result recovered = recovercrests(m_settings.folder(WappenFolder)); !recovered)
        m_status->setText(recovered.message);

    const QString caption = QStringLiteral("%1 %2.%3.%4")
                                .arg(QLatin1String(programName))
                                .arg(versionMajor)
                                .arg(versionMinor)
                                .arg(versionRevision);
    setWindowTitle(caption);
    m_programLabel->setText(caption);
    if (QScreen *screen = QGuiApplication::primaryScreen())
        setGeometry(screen->availableGeometry());

    m_teamtab->setKitFolder(m_settings.kitFolder());
    m_teamtab->setWappenFolder(m_settings.folder(WappenFolder));
    m_db = opendb(m_settings.dbpfad());
    if (!m_db.message.isEmpty())
        m_dialogs->warning(this, QStringLiteral("Datenbank"), m_db.message);

    reloadtree();
    m_playertab->setGesichtFolder(m_settings.folder(GesichtFolder));
    try {
        if (db())
            m_playertab->load_attribute(*db(), m_settings.folder(AttributeFolder));
    } catch (const DbError &e) {
        m_dialogs->warning(this, QStringLiteral("Datenbank"),
                           QStringLiteral("Die Talente lassen sich nicht lesen: %1").arg(e.text()));
    }

    action(QStringLiteral("impanstoss4"))->setEnabled(db() && checka4(*db()));
    mnuoptionenitem_Click(m_settings.trikotsatz == 0 ? 0 : 1);
    m_progress->setValue(100);
}

void MainWindow::reloadtree()
{
    {
        std::optional<Busy> busy;
        try {
            if (db() && db()->scalar(QStringLiteral("SELECT NUMMER FROM vereine WHERE NUMMER = 0")).isNull())
                busy.emplace(this, m_status, m_progress, QStringLiteral("Erstelle Transfermarkt..."));
            m_tree = load_dbteam(db());
        } catch (const DbError &e) {
            m_tree = load_dbteam(nullptr);
            m_dialogs->warning(this, QStringLiteral("Datenbank"),
                               QStringLiteral("Die Daten lassen sich nicht lesen: %1").arg(e.text()));
        }
    }
    m_lists->fill(m_tree);
    const QString tag = m_tvdb->property("Tag").toString();
    m_tvdb->clear();
    QHash<QString, QTreeWidgetItem *> items;
    QTreeWidgetItem *selected = nullptr;
    for (const TreeNode &node : m_tree.nodes) {
        QTreeWidgetItem *parent = node.parent.isEmpty() ? nullptr : items.value(node.parent);
        if (!node.parent.isEmpty() && !parent)
            continue;
        auto *item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tvdb);
        item->setText(0, node.text);
        item->setData(0, Qt::UserRole, node.key);
        item->setData(0, Qt::UserRole + 1, node.picture);
        item->setIcon(0, treeicon(node.picture));
        items.insert(node.key, item);
        if (!selected && !tag.isEmpty() && node.key == tag)
            selected = item;
    }
    if (selected) {
        for (QTreeWidgetItem *p = selected; p; p = p->parent())
            p->setExpanded(true);
        m_tvdb->setCurrentItem(selected);
    }
}

void MainWindow::reloadandshow()
{
    reloadtree();
    if (QTreeWidgetItem *item = m_tvdb->currentItem()) {
        tvdb_NodeClick(item);
    } else {
        anaus(NationalMode, false);
        m_gridmodel->clear();
        m_gridrow = -1;
    }
}

void MainWindow::closedb()
{
    m_db = OpenedDb{};
}

void MainWindow::showabout()
{
    AboutDialog about(this, m_dialogs);
    about.exec();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!m_dialogs->question(this, QStringLiteral("Programmende"), QStringLiteral("Programm beenden"))) {
        event->ignore();
        return;
    }
    closedb();
    const auto windows = QApplication::topLevelWidgets();
    for (auto it = windows.rbegin(); it != windows.rend(); ++it) {
        if (*it != this && (*it)->isVisible())
            (*it)->close();
    }
    event->accept();
}

void MainWindow::checkallgesichter()
{
    if (!db())
        return;
    FaceCheck check;
    {
        Busy busy(this, m_status, m_progress, QStringLiteral("Überprüfe Spielergesichter..."));
        check = zorbo::checkallgesichter(*db(), FacePictures(m_settings.folder(GesichtFolder)), busy.progress());
    }
    if (!check.result) {
        m_dialogs->warning(this, QStringLiteral("Spielergesichter"), check.result.message);
        return;
    }
    if (check.corrected > 0)
        reloadandshow(); // the grid's rows hold the old face codes
    m_dialogs->information(this, QStringLiteral("Spielergesichter"),
                           check.corrected == 0 ? QStringLiteral("Alle Gesichter in Ordnung!")
                                                : QStringLiteral("%1 Gesichter korrigiert!").arg(check.corrected));
}

} // namespace zorbo
