#include "app/mainwindow.h"

#include "anstoss/ui/anstossmenus.h"
#include "app/aboutdialog.h"
#include "app/busy.h"
#include "app/historypanel.h"
#include "app/playerlistpanel.h"
#include "app/problemspanel.h"
#include "app/searchfield.h"
#include "app/selfcheckwindow.h"
#include "core/defaultfolders.h"
#include "core/teamlists.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "editor/ui/editorview.h"
#include "exchange/ui/exchangemenus.h"
#include "generated/version.h"
#include "resources/crestswitch.h"
#include "resources/ui/crestmenus.h"
#include "tools/ui/toolsmenus.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>

namespace zorbo {

// What the subsystems see of the main window.
class MainWindow::WindowShell : public Shell {
public:
    explicit WindowShell(MainWindow *window) : Shell(window), m_window(window) {}

    World *world() const override { return m_window->m_world.get(); }
    Settings &settings() override { return m_window->m_world ? m_window->m_world->settings() : m_window->m_nosettings; }
    Dialogs &dialogs() const override { return *m_window->m_dialogs; }
    QWidget *window() override { return m_window; }
    TeamLists *lists() const override { return m_window->m_lists; }
    void setcentral(QWidget *widget) override { m_window->setCentralWidget(widget); }
    QAction *entry(const QString &name) const override { return m_window->action(name); }
    void handle(const QString &name, std::function<void()> work) override { m_window->handle(name, std::move(work)); }
    std::unique_ptr<BusyScope> busy(const QString &text) override
    {
        return std::make_unique<Busy>(m_window, m_window->m_status, m_window->m_progress, text, m_window->m_cancel);
    }
    void status(const QString &text) override { m_window->m_status->setText(text); }

private:
    MainWindow *m_window;
};

MainWindow::MainWindow(const QString &programFolder, Dialogs *dialogs)
    : m_programFolder(programFolder), m_dialogs(dialogs)
{
    setObjectName(QStringLiteral("frmmain"));
    m_lists = new TeamLists(this);
    m_shell = new WindowShell(this);
    buildstatusbar();
    buildmenus();
    buildtoolbar();
    handle(QStringLiteral("mnudateiitem(7)"), [this] { close(); });
    handle(QStringLiteral("mnuinfoitem(0)"), [this] { showabout(); });

    m_editor = installeditor(*m_shell);
    installexchange(*m_shell);
    installresources(*m_shell);
    installanstoss(*m_shell);
    installtools(*m_shell);
    installsearch(*m_shell);
    installproblems(*m_shell);
    installhistory(*m_shell);
    installrecentfiles(*m_shell);
    installplayerlist(*m_shell);
    installselfcheck(*m_shell);
}

MainWindow::~MainWindow() = default;

void MainWindow::buildstatusbar()
{
    auto *bar = new QStatusBar(this);
    bar->setObjectName(QStringLiteral("stbstatus"));
    m_status = new QLabel(bar);
    m_status->setObjectName(QStringLiteral("stbstatus(1)"));
    m_progress = new QProgressBar(bar);
    m_progress->setObjectName(QStringLiteral("prostatus"));
    m_progress->setRange(0, 100);
    m_progress->setValue(100);
    m_progress->setTextVisible(false);
    m_cancel = new QPushButton(QStringLiteral("Abbrechen"), bar);
    m_cancel->setObjectName(QStringLiteral("stbabbrechen"));
    m_programLabel = new QLabel(bar);
    m_programLabel->setObjectName(QStringLiteral("stbstatus(3)"));
    bar->addWidget(m_status, 1);
    bar->addWidget(m_progress, 1);
    bar->addWidget(m_cancel);
    m_progress->hide(); // shown by the runs
    m_cancel->hide();
    bar->addWidget(m_programLabel, 1);
    setStatusBar(bar);
}

QAction *MainWindow::action(const QString &objectName) const
{
    return m_actions.value(objectName);
}

void MainWindow::formload()
{
    // The same start-up as the command line's: settings, delivered folders,
    // database, transfer market.
    m_world = openworld(m_programFolder);
    if (!m_world->settingsMessage().isEmpty())
        m_dialogs->warning(this, QString(), m_world->settingsMessage());
    // Missing pictures never stop the start; the status bar says what is missing.
    if (!m_world->missingPictures().isEmpty())
        m_status->setText(m_world->missingPictures().first());
    // A crest import cut off by a crash is finished or dropped, so the
    // crests are all old or all new before any is shown.
    if (const Result recovered = recovercrests(settings().folder(WappenFolder)); !recovered)
        m_status->setText(recovered.message);
    connect(m_world.get(), &World::changed, m_shell, &Shell::changed);

    const QString caption = QStringLiteral("%1 %2.%3.%4")
                                .arg(QLatin1String(programName))
                                .arg(versionMajor)
                                .arg(versionMinor)
                                .arg(versionRevision);
    setWindowTitle(caption);
    m_programLabel->setText(caption);
    if (QScreen *screen = QGuiApplication::primaryScreen())
        setGeometry(screen->availableGeometry());

    if (!m_world->databaseMessage().isEmpty())
        m_dialogs->warning(this, QStringLiteral("Datenbank"), m_world->databaseMessage());

    emit m_shell->opened();
    Change everything;
    everything.everything = true;
    emit m_shell->changed(everything);
    m_progress->setValue(100);
}

void MainWindow::showabout()
{
    AboutDialog about(this, m_dialogs, m_programFolder);
    about.exec();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // A run disables the window while it goes; the world it works on must
    // not go from under it. Its "Abbrechen" stops it first.
    if (Busy::running(this)) {
        event->ignore();
        m_status->setText(QStringLiteral("Das Programm lässt sich erst nach dem laufenden Vorgang beenden."));
        return;
    }
    if (m_shell->settle() == Settled::Cancelled) {
        event->ignore();
        return;
    }
    if (!m_dialogs->question(this, QStringLiteral("Programmende"), QStringLiteral("Programm beenden"))) {
        event->ignore();
        return;
    }
    m_world.reset();
    const auto windows = QApplication::topLevelWidgets();
    for (auto it = windows.rbegin(); it != windows.rend(); ++it) {
        if (*it != this && (*it)->isVisible())
            (*it)->close();
    }
    event->accept();
}

} // namespace zorbo
