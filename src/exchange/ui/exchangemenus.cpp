#include "exchange/ui/exchangemenus.h"

#include "core/settings.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "exchange/configruns.h"
#include "exchange/teamfile.h"
#include "exchange/teamfileopen.h"
#include "exchange/ui/opendialog.h"

#include <QWidget>

namespace zorbo {

namespace {

// Which file is meant is decided by the filter entry, never by the name.
const QStringList configFilters = {QStringLiteral("Zorbo Vereine (1_tm.cfg) (*.cfg)"),
                                   QStringLiteral("Zorbo Spieler (1_sp.cfg) (*.cfg)")};
const QStringList teamFilters = {QStringLiteral("Zorbo Editor Team (*.tea)")};

// The outcome of a run: what it did or why it stopped, with all its findings.
void tell(Shell &shell, const QString &title, const ExchangeResult &run)
{
    if (run.result.cancelled)
        shell.status(run.result.message);
    else
        shell.dialogs().report(shell.window(), title, run.result.message, run.findings, !run.ok());
}

// Runs a reader once as the game's code page; a file that reads as UTF-8
// is read again as UTF-8 when the user says so.
template<class Run>
ExchangeResult askencoding(Shell &shell, const QString &title, Run run)
{
    ExchangeResult result = run(FileEncoding::Detect);
    // Read as the game's code page, a UTF-8 file would bring every umlaut
    // in as two characters; the run stopped before touching the world.
    if (!result.ok() && result.looksUtf8) {
        if (!shell.dialogs().question(shell.window(), title,
                                      result.result.message + QStringLiteral("\n\nSoll die Datei als UTF-8 gelesen werden?")))
            return ExchangeResult::failure(QString());
        result = run(FileEncoding::Utf8);
    }
    return result;
}

void importconfigfile(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString file = shell.dialogs().openfile(shell.window(), QStringLiteral("Öffnen ..."),
                                                  shell.settings().folder(ZorboconfigFolder), configFilters, &filter);
    if (file.isEmpty())
        return;
    const ConfigKind kind = filter == 1 ? ConfigKind::Players : ConfigKind::Teams;
    const ExchangeResult run = askencoding(shell, QStringLiteral("Import"), [&](FileEncoding encoding) {
        const auto busy = shell.busy(kind == ConfigKind::Teams ? QStringLiteral("Importiere Vereine...")
                                                               : QStringLiteral("Importiere Spieler..."));
        return shell.run([&](Database &db) { return importconfig(db, file, kind, busy->progress(), encoding); });
    });
    if (!run.ok() && run.result.message.isEmpty())
        return; // the user did not want the file read as UTF-8
    tell(shell, QStringLiteral("Import"), run);
}

void exportconfigfile(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString file = shell.dialogs().savefile(shell.window(), QStringLiteral("Zorbo Config exportieren"),
                                                  shell.settings().folder(ZorboconfigFolder), configFilters, &filter);
    if (file.isEmpty())
        return;
    const ConfigKind kind = filter == 1 ? ConfigKind::Players : ConfigKind::Teams;
    ExchangeResult run;
    {
        const auto busy = shell.busy(kind == ConfigKind::Teams ? QStringLiteral("Exportiere Vereine...")
                                                               : QStringLiteral("Exportiere Spieler..."));
        run = shell.run([&](Database &db) { return exportconfig(db, file, kind, busy->progress()); });
    }
    tell(shell, QStringLiteral("Export"), run);
}

// The club on show goes out as a team file.
void saveteamfile(Shell &shell)
{
    const QString key = shell.shownkey();
    if (!shell.db() || !key.startsWith(QLatin1Char('T')) || key.endsWith(QLatin1Char('_')))
        return;
    int filter = 0;
    const QString file = shell.dialogs().savefile(
        shell.window(), QStringLiteral("Speichern..."),
        shell.settings().folder(ZorbodatenFolder) + shell.showntext() + QStringLiteral(".tea"), teamFilters, &filter);
    if (file.isEmpty())
        return;
    ExchangeResult run;
    {
        const auto busy = shell.busy(QStringLiteral("Speichere Verein..."));
        run = shell.run([&](Database &db) { return exportverein(db, file, key.mid(1).toLongLong(), busy->progress()); });
    }
    if (!run.ok())
        shell.dialogs().warning(shell.window(), QStringLiteral("Speichern"), run.result.message);
    else
        shell.status(run.result.message);
}

// A team file comes in as a new club or over a club; the club is shown afterwards.
void openteamfile(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString file = shell.dialogs().openfile(shell.window(), QStringLiteral("Öffnen..."),
                                                  shell.settings().folder(ZorbodatenFolder), teamFilters, &filter);
    if (file.isEmpty())
        return;
    // Kept hidden between uses, so its lists follow every rebuild.
    auto *dialog = shell.window()->findChild<OpenDialog *>(QStringLiteral("frmopen"));
    if (!dialog)
        dialog = new OpenDialog(shell.lists(), shell.window());
    dialog->setfile(file);
    if (dialog->exec() != QDialog::Accepted)
        return;
    const ExchangeResult run = askencoding(shell, QStringLiteral("Öffnen"), [&](FileEncoding encoding) {
        const auto busy = shell.busy(dialog->newclub() ? QStringLiteral("Erstelle Verein...")
                                                       : QStringLiteral("Aktualisiere Verein..."));
        return shell.run([&](Database &db) {
            return dialog->newclub() ? openteamnew(db, file, dialog->country(), busy->progress(), encoding)
                                     : openteamreplace(db, file, dialog->club(), busy->progress(), encoding);
        });
    });
    if (!run.ok()) {
        if (!run.result.message.isEmpty())
            shell.dialogs().warning(shell.window(), QStringLiteral("Öffnen"), run.result.message);
        return;
    }
    shell.select(QStringLiteral("T%1").arg(run.team));
    shell.status(run.result.message);
}

} // namespace

void installexchange(Shell &shell)
{
    shell.handle(QStringLiteral("mnudateiitem(1)"), [&shell] { openteamfile(shell); });
    shell.handle(QStringLiteral("mnudateiitem(2)"), [&shell] { saveteamfile(shell); });
    shell.handle(QStringLiteral("mnuimportitem(0)"), [&shell] { importconfigfile(shell); });
    shell.handle(QStringLiteral("mnuexportitem(0)"), [&shell] { exportconfigfile(shell); });
    // A team file is saved from a stored club on show.
    const auto followshown = [&shell](const QString &key) {
        const bool club = key.size() > 1 && key.front() == QLatin1Char('T') && !key.endsWith(QLatin1Char('_'))
                          && key != QLatin1String("T0");
        shell.setopen(QStringLiteral("mnudateiitem(2)"), club);
    };
    QObject::connect(&shell, &Shell::shown, &shell, followshown);
    followshown(QString());
}

} // namespace zorbo
