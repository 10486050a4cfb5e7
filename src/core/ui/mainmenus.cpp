// Menu and toolbar of the main window.
#include "core/ui/mainwindow.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QTreeWidget>

namespace zorbo {

namespace {

struct Entry {
    const char *name;     // objectName, as "mnudateiitem(0)"
    const char *caption;  // empty: separator
    const char *shortcut;
    const char *submenu;  // objectName of the submenu this entry opens
    bool hidden;
};

struct Menu {
    const char *name;
    const char *caption;
    std::initializer_list<Entry> entries;
    bool hidden;
};

// The order of the menus and their entries is the user's map of the program.
const Menu menus[] = {
    {"mnudatei", "&Datei",
     {{"mnudateiitem(0)", "&Neu...", "Ctrl+N", nullptr, false},
      {"mnudateiitem(1)", "&Öffnen...", "Ctrl+O", nullptr, false},
      {"mnudateiitem(2)", "&Speichern...", "Ctrl+S", nullptr, false},
      {"mnudateiitem(3)", "", nullptr, nullptr, false},
      {"mnudateiitem(4)", "&Import...", nullptr, "mnuimport", false},
      {"mnuimportitem(0)", "Config (Zorbo)", "Ctrl+I", "mnuimport", false},
      {"mnuimportitem(1)", "&Wappen (wa.res)", "Ctrl+W", "mnuimport", false},
      {"mnuimportitem(2)", "Verein (&Anstoss Exporter)", "Ctrl+A", "mnuimport", false},
      {"mnuimportitem(3)", "&Liga/Land (Anstoss Exporter)", "Ctrl+L", "mnuimport", false},
      {"mnudateiitem(5)", "&Export...", nullptr, "mnuexport", false},
      {"mnuexportitem(0)", "Config (Zorbo)", "Ctrl+E", "mnuexport", false},
      {"mnuexportitem(1)", "&Wappen (wa.res)", "Ctrl+C", "mnuexport", false},
      {"mnudateiitem(6)", "", nullptr, nullptr, false},
      {"mnudateiitem(7)", "&Programmende", "Ctrl+Q", nullptr, false}},
     false},
    {"mnupopup", "popup", {{"mnupopupitem(0)", "aktualisieren", nullptr, nullptr, false}}, true},
    {"mnuoptionen", "&Optionen",
     {{"mnuoptionenitem(0)", "Trikotsatz (&Orignal)", "Ctrl+F1", nullptr, false},
      {"mnuoptionenitem(1)", "Trikotsatz (&Zorbode)", "Ctrl+F2", nullptr, false},
      {"mnuoptionenitem(2)", "aktuellen Trikotsatz (ma.res) in Zorbo kopieren", nullptr, nullptr, false},
      {"mnuoptionenitem(3)", "", nullptr, nullptr, false},
      {"mnuoptionenitem(4)", "&Verzeichnisse", "Ctrl+V", nullptr, true},
      {"mnuoptionenitem(5)", "", nullptr, nullptr, true},
      {"mnuoptionenitem(6)", "Datenbank &löschen", nullptr, nullptr, false},
      {"mnuoptionenitem(7)", "Datenbank komprimieren", nullptr, nullptr, false}},
     false},
    {"mnutool", "&Tools",
     {{"mnutoolitem(0)", "&Spielerbilder zuordnen", nullptr, nullptr, false},
      {"mnutoolitem(1)", "Spieler&gesichter überprüfen", nullptr, nullptr, false},
      {"mnutoolitem(2)", "&Trikotfarbeneditor (Livespiel)", nullptr, nullptr, true},
      {"mnutoolitem(3)", "&Trikotfarben zuorden (Livespiel)", nullptr, nullptr, true},
      {"mnutoolitem(4)", "template erstellen", nullptr, nullptr, true},
      {"mnutoolitem(5)", "&Rückennummer überprüfen", nullptr, nullptr, false},
      {"mnutoolitem(6)", "&Vereinsname überprüfen", nullptr, nullptr, false},
      {"mnutoolitem(7)", "templiga", nullptr, nullptr, true}},
     false},
    {"transmarkt", "Tranfer&markt",
     {{"transmarkt_item(0)", "&Freie Spieler", nullptr, nullptr, false},
      {"transmarkt_item(1)", "&Spielertransfer", nullptr, nullptr, false}},
     false},
    {"mnuinfo", "&Info", {{"mnuinfoitem(0)", "&Info zum Zorbo Editor", nullptr, nullptr, false}}, false},
};

struct Button {
    const char *key;
    const char *tooltip;
    const char *menuEntry; // the menu entry whose handler the button runs
    QStyle::StandardPixmap icon;
};

const Button buttons[] = {
    {"new", "Neu", "mnudateiitem(0)", QStyle::SP_FileIcon},
    {"open", "Öffnen", "mnudateiitem(1)", QStyle::SP_DialogOpenButton},
    {"save", "Speichern", "mnudateiitem(2)", QStyle::SP_DialogSaveButton},
    {nullptr, nullptr, nullptr, QStyle::SP_CustomBase},
    {"impconfig", "Import Config (Zorbo)", "mnuimportitem(0)", QStyle::SP_ArrowDown},
    {"expconfig", "Export Config (Zorbo)", "mnuexportitem(0)", QStyle::SP_ArrowUp},
    {"impanstoss4", "Import Verein (Anstoss 4)", "mnuimportitem(2)", QStyle::SP_DirOpenIcon},
    {nullptr, nullptr, nullptr, QStyle::SP_CustomBase},
    {"trikotoriginal", "Trikotsatz (Orignal)", "mnuoptionenitem(0)", QStyle::SP_DialogYesButton},
    {"trikotzorbode", "Trikotsatz (Zorbode)", "mnuoptionenitem(1)", QStyle::SP_DialogNoButton},
};

// Entries whose work is in place; the others wait, disabled, for theirs.
const QStringList working = {
    QStringLiteral("mnudateiitem(0)"), QStringLiteral("mnudateiitem(1)"), QStringLiteral("mnudateiitem(2)"),
    QStringLiteral("mnudateiitem(4)"), QStringLiteral("mnudateiitem(5)"), QStringLiteral("mnudateiitem(7)"),
    QStringLiteral("mnuimportitem(0)"), QStringLiteral("mnuimportitem(1)"), QStringLiteral("mnuexportitem(0)"),
    QStringLiteral("mnuexportitem(1)"), QStringLiteral("mnupopupitem(0)"), QStringLiteral("mnuoptionenitem(0)"),
    QStringLiteral("mnuoptionenitem(1)"), QStringLiteral("mnuoptionenitem(2)"), QStringLiteral("mnuinfoitem(0)"),
};

} // namespace

void MainWindow::buildmenus()
{
    QHash<QString, QMenu *> submenus;
    for (const Menu &m : menus) {
        auto *menu = new QMenu(QString::fromUtf8(m.caption), this);
        menu->setObjectName(QLatin1String(m.name));
        if (!m.hidden)
            menuBar()->addMenu(menu);
        for (const Entry &e : m.entries) {
            QMenu *target = menu;
            const QString name = QLatin1String(e.name);
            if (e.submenu && !name.startsWith(QLatin1String("mnudateiitem")))
                target = submenus.value(QLatin1String(e.submenu));
            QAction *act = nullptr;
            if (e.submenu && name.startsWith(QLatin1String("mnudateiitem"))) {
                auto *sub = target->addMenu(QString::fromUtf8(e.caption));
                sub->setObjectName(QLatin1String(e.submenu));
                submenus.insert(QLatin1String(e.submenu), sub);
                act = sub->menuAction();
            } else if (!*e.caption) {
                act = target->addSeparator();
            } else {
                act = target->addAction(QString::fromUtf8(e.caption));
                if (e.shortcut)
                    act->setShortcut(QKeySequence(QLatin1String(e.shortcut)));
                act->setEnabled(working.contains(name));
                act->setProperty("pending", !working.contains(name));
            }
            act->setObjectName(name);
            act->setVisible(!e.hidden);
            m_actions.insert(name, act);
        }
        if (m.hidden)
            m_actions.insert(QLatin1String(m.name), menu->menuAction());
    }
    action(QStringLiteral("mnuoptionenitem(0)"))->setCheckable(true);
    action(QStringLiteral("mnuoptionenitem(1)"))->setCheckable(true);
    action(QStringLiteral("mnuoptionenitem(1)"))->setChecked(true);

    connect(action(QStringLiteral("mnudateiitem(0)")), &QAction::triggered, this, [this] { mnudateiitem_Click(0); });
    connect(action(QStringLiteral("mnudateiitem(7)")), &QAction::triggered, this, &QWidget::close);
    connect(action(QStringLiteral("mnupopupitem(0)")), &QAction::triggered, this, &MainWindow::reloadtree);
    connect(action(QStringLiteral("mnuoptionenitem(0)")), &QAction::triggered, this, [this] { mnuoptionenitem_Click(0); });
    connect(action(QStringLiteral("mnuoptionenitem(1)")), &QAction::triggered, this, [this] { mnuoptionenitem_Click(1); });
    connect(action(QStringLiteral("mnuoptionenitem(2)")), &QAction::triggered, this, [this] { mnuoptionenitem_Click(2); });
    connect(action(QStringLiteral("mnuinfoitem(0)")), &QAction::triggered, this, &MainWindow::showabout);

    auto *popup = findChild<QMenu *>(QStringLiteral("mnupopup"));
    m_tvdb->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tvdb, &QWidget::customContextMenuRequested, this,
            [this, popup](const QPoint &pos) { popup->exec(m_tvdb->viewport()->mapToGlobal(pos)); });
}

void MainWindow::buildtoolbar()
{
    auto *bar = addToolBar(QStringLiteral("Werkzeuge"));
    bar->setObjectName(QStringLiteral("tbtoolbar"));
    bar->setMovable(false);
    for (const Button &b : buttons) {
        if (!b.key) {
            bar->addSeparator();
            continue;
        }
        const QString key = QLatin1String(b.key);
        QAction *menuEntry = action(QLatin1String(b.menuEntry));
        auto *act = bar->addAction(style()->standardIcon(b.icon), QString::fromUtf8(b.tooltip));
        act->setObjectName(key);
        act->setToolTip(QString::fromUtf8(b.tooltip));
        act->setEnabled(menuEntry->isEnabled());
        act->setProperty("pending", menuEntry->property("pending"));
        connect(act, &QAction::triggered, menuEntry, &QAction::trigger);
        m_actions.insert(key, act);
    }
    for (const char *key : {"trikotoriginal", "trikotzorbode"})
        action(QLatin1String(key))->setCheckable(true);
    action(QStringLiteral("trikotoriginal"))->setChecked(true);
    action(QStringLiteral("impanstoss4"))->setEnabled(false);
}

} // namespace zorbo
