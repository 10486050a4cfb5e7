// Menu and toolbar of the main window.
#include "app/mainwindow.h"

#include "core/ui/shell.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>

namespace zorbo {

namespace {

struct Entry {
    const char *name;     // objectName, as "mnudateiitem(0)"
    const char *caption;  // empty: separator
    const char *shortcut; // more than one apart by "; "
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
      {"mnudateiitem(10)", "&Zuletzt geöffnet", nullptr, "mnuzuletzt", false},
      {"mnudateiitem(3)", "", nullptr, nullptr, false},
      {"mnudateiitem(4)", "&Import...", nullptr, "mnuimport", false},
      {"mnuimportitem(0)", "Config (Zorbo)", "Ctrl+I", "mnuimport", false},
      {"mnuimportitem(1)", "&Wappen (wa.res)", "Ctrl+W", "mnuimport", false},
      {"mnuimportitem(2)", "Verein (&Anstoss Exporter)", "Ctrl+A", "mnuimport", false},
      {"mnuimportitem(3)", "&Liga/Land (Anstoss Exporter)", "Ctrl+Shift+L", "mnuimport", false},
      {"mnudateiitem(5)", "&Export...", nullptr, "mnuexport", false},
      {"mnuexportitem(0)", "Config (Zorbo)", "Ctrl+E", "mnuexport", false},
      {"mnuexportitem(1)", "&Wappen (wa.res)", "Ctrl+C", "mnuexport", false},
      {"mnudateiitem(8)", "Änderungen e&xportieren...", nullptr, nullptr, false},
      {"mnudateiitem(9)", "Änderungen an&wenden...", nullptr, nullptr, false},
      {"mnudateiitem(6)", "", nullptr, nullptr, false},
      {"mnudateiitem(7)", "&Programmende", "Ctrl+Q", nullptr, false}},
     false},
    {"mnubearbeiten", "&Bearbeiten",
     {{"mnubearbeitenitem(0)", "&Rückgängig", "Ctrl+Z", nullptr, false},
      {"mnubearbeitenitem(1)", "&Wiederherstellen", "Ctrl+Y; Ctrl+Shift+Z", nullptr, false},
      {"mnubearbeitenitem(2)", "", nullptr, nullptr, false},
      {"mnubearbeitenitem(3)", "&Verlauf", nullptr, nullptr, false},
      {"mnubearbeitenitem(4)", "", nullptr, nullptr, false},
      {"mnubearbeitenitem(5)", "&Alle Spieler...", "Ctrl+L", nullptr, false}},
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
      {"mnuoptionenitem(7)", "Datenbank komprimieren", nullptr, nullptr, false},
      {"mnuoptionenitem(8)", "&Wiederherstellungspunkte...", nullptr, nullptr, false}},
     false},
    {"mnutool", "&Tools",
     {{"mnutoolitem(0)", "&Spielerbilder zuordnen", nullptr, nullptr, false},
      {"mnutoolitem(1)", "Spieler&gesichter überprüfen", nullptr, nullptr, false},
      {"mnutoolitem(2)", "&Trikotfarbeneditor (Livespiel)", nullptr, nullptr, true},
      {"mnutoolitem(3)", "&Trikotfarben zuorden (Livespiel)", nullptr, nullptr, true},
      {"mnutoolitem(4)", "template erstellen", nullptr, nullptr, true},
      {"mnutoolitem(5)", "&Rückennummer überprüfen", nullptr, nullptr, false},
      {"mnutoolitem(6)", "&Vereinsname überprüfen", nullptr, nullptr, false},
      {"mnutoolitem(7)", "templiga", nullptr, nullptr, true},
      {"mnutoolitem(8)", "&Probleme anzeigen", nullptr, nullptr, false},
      {"mnutoolitem(9)", "&Welten vergleichen...", nullptr, nullptr, false},
      {"mnutoolitem(11)", "Spiel&dateien prüfen", nullptr, nullptr, false},
      {"mnutoolitem(10)", "Wappen aus &Bild...", nullptr, nullptr, false}},
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
    {"undo", "Rückgängig", "mnubearbeitenitem(0)", QStyle::SP_ArrowBack},
    {"redo", "Wiederherstellen", "mnubearbeitenitem(1)", QStyle::SP_ArrowForward},
    {nullptr, nullptr, nullptr, QStyle::SP_CustomBase},
    {"impconfig", "Import Config (Zorbo)", "mnuimportitem(0)", QStyle::SP_ArrowDown},
    {"expconfig", "Export Config (Zorbo)", "mnuexportitem(0)", QStyle::SP_ArrowUp},
    {"impanstoss4", "Import Verein (Anstoss 4)", "mnuimportitem(2)", QStyle::SP_DirOpenIcon},
    {nullptr, nullptr, nullptr, QStyle::SP_CustomBase},
    {"trikotoriginal", "Trikotsatz (Orignal)", "mnuoptionenitem(0)", QStyle::SP_DialogYesButton},
    {"trikotzorbode", "Trikotsatz (Zorbode)", "mnuoptionenitem(1)", QStyle::SP_DialogNoButton},
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
                    act->setShortcuts(QKeySequence::listFromString(QLatin1String(e.shortcut)));
                // Disabled until a subsystem takes the entry's work.
                act->setEnabled(false);
                act->setProperty("pending", true);
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
        // The button is open whenever its entry is.
        connect(menuEntry, &QAction::changed, act, [act, menuEntry] {
            act->setEnabled(menuEntry->isEnabled());
            act->setProperty("pending", menuEntry->property("pending"));
            act->setProperty("Offen", menuEntry->property("Offen"));
        });
        m_actions.insert(key, act);
    }
    for (const char *key : {"trikotoriginal", "trikotzorbode"})
        action(QLatin1String(key))->setCheckable(true);
    action(QStringLiteral("trikotoriginal"))->setChecked(true);
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
        action(QLatin1String(key))->setIcon(QIcon(QStringLiteral(":/icons/%1.png").arg(QLatin1String(file))));
}

void MainWindow::handle(const QString &name, std::function<void()> work)
{
    QAction *act = action(name);
    if (!act)
        return;
    // A run that may replace what the forms show asks about their typing
    // first; these entries leave the forms alone, or ask themselves.
    static const QStringList leaveforms = {
        QStringLiteral("mnudateiitem(7)"),      QStringLiteral("mnuinfoitem(0)"),
        QStringLiteral("mnuoptionenitem(0)"),   QStringLiteral("mnuoptionenitem(1)"),
        QStringLiteral("mnubearbeitenitem(0)"), QStringLiteral("mnubearbeitenitem(1)"),
        QStringLiteral("mnubearbeitenitem(3)"), QStringLiteral("mnutoolitem(8)"),
        QStringLiteral("mnubearbeitenitem(5)")};
    const bool asks = !leaveforms.contains(name);
    connect(act, &QAction::triggered, this, [this, asks, work = std::move(work)] {
        if (asks && m_shell->settle() == Settled::Cancelled)
            return;
        work();
    });
    act->setProperty("pending", false);
    act->setEnabled(act->property("Offen").isValid() ? act->property("Offen").toBool() : true);
}

} // namespace zorbo
