#include "exchange/ui/exchangemenus.h"

#include "core/problems.h"
#include "core/settings.h"
#include "core/ui/dialogs.h"
#include "core/ui/overwrite.h"
#include "core/ui/shell.h"
#include "exchange/formats.h"
#include "exchange/ui/changemenus.h"
#include "exchange/ui/opendialog.h"

#include <QAction>
#include <QWidget>

namespace zorbo {

namespace {

// The configuration files, in the order of the file dialogs' filters; which
// file is meant is decided by the filter entry, never by the name.
QList<const FileFormat *> configformats()
{
    return {exchangeformat(QStringLiteral("vereine")), exchangeformat(QStringLiteral("spieler"))};
}

const FileFormat &teamfile()
{
    return *exchangeformat(QStringLiteral("teamdatei"));
}

// The outcome of a run: what it did or why it stopped, with all its findings.
void tell(Shell &shell, const QString &title, const FormatRun &run)
{
    if (run.result.cancelled)
        shell.status(run.result.message);
    else
        shell.dialogs().report(shell.window(), title, run.result.message, run.findings, !run.ok());
}

// Reads a file as the game's code page; one that reads as UTF-8 is read
// again as UTF-8 when the user says so. Empty when the user says no.
std::optional<FormatRun> read(Shell &shell, const QString &title, const QString &busytext, const FileFormat &format,
                              FormatRequest request)
{
    const auto once = [&] {
        const auto busy = shell.busy(busytext);
        return runformat(format, true, FormatPlace{shell.settings(), shell.world()}, request, busy->progress());
    };
    FormatRun run = once();
    // Read as the game's code page, a UTF-8 file would bring every umlaut
    // in as two characters; the run stopped before touching the world.
    if (!run.ok() && run.looksUtf8) {
        if (!shell.dialogs().question(shell.window(), title,
                                      run.result.message + QStringLiteral("\n\nSoll die Datei als UTF-8 gelesen werden?")))
            return std::nullopt;
        request.utf8 = true;
        run = once();
    }
    return run;
}

void importconfigfile(Shell &shell, const FileFormat &format, const QString &file)
{
    if (const auto run = read(shell, QStringLiteral("Import"), format.reading, format, {file}))
        tell(shell, QStringLiteral("Import"), *run);
}

void chooseconfigfile(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString file = shell.openfile(FileKind::Game, QStringLiteral("Öffnen ..."),
                                                  shell.settings().folder(ZorboconfigFolder),
                                                  formatfilters(configformats()), &filter);
    if (file.isEmpty())
        return;
    const FileFormat &format = *configformats().value(filter, configformats().first());
    // "Zuletzt geöffnet" brings it back in the same format, whatever its name.
    shell.rememberimport(file, format.key);
    importconfigfile(shell, format, file);
}

// Before an export: the world's problems. False when the user would rather
// not export now (and perhaps look at the problems first).
bool exportdespiteproblems(Shell &shell)
{
    const Settings &settings = shell.settings();
    ProblemReport report;
    {
        const auto busy = shell.busy(QStringLiteral("Prüfe die Welt..."));
        const Progress progress = busy->progress();
        report = shell.run([&](Database &db) { return checkproblems(db, settings, progress); });
    }
    if (!report.result.ok || report.errors() == 0)
        return report.result.ok;
    const int answer = shell.dialogs().choose(
        shell.window(), QStringLiteral("Export"), QStringLiteral("%1 Probleme gefunden. Trotzdem exportieren?").arg(report.errors()),
        {QStringLiteral("Exportieren"), QStringLiteral("Probleme anzeigen"), QStringLiteral("Abbrechen")});
    if (answer == 1) {
        if (QAction *panel = shell.entry(QStringLiteral("mnutoolitem(8)")))
            panel->trigger();
    }
    return answer == 0;
}

void exportconfigfile(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString file = shell.savefile(FileKind::Game, QStringLiteral("Zorbo Config exportieren"),
                                                  shell.settings().folder(ZorboconfigFolder),
                                                  formatfilters(configformats()), &filter);
    if (file.isEmpty() || !mayoverwrite(shell, QStringLiteral("Export"), file) || !exportdespiteproblems(shell))
        return;
    const FileFormat &format = *configformats().value(filter, configformats().first());
    FormatRun run;
    {
        const auto busy = shell.busy(format.writing);
        // What code page 1252 can't hold goes out in its nearest letters,
        // each such text told in the closing message.
        FormatRequest request;
        request.path = file;
        request.nearest = true;
        run = runformat(format, false, FormatPlace{shell.settings(), shell.world()}, request, busy->progress());
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
    const QString file = shell.savefile(
        FileKind::Team, QStringLiteral("Speichern..."),
        shell.settings().folder(ZorbodatenFolder) + shell.showntext() + QStringLiteral(".tea"), {teamfile().filter()},
        &filter);
    if (file.isEmpty())
        return;
    FormatRequest request{file};
    request.team = key.mid(1).toLongLong();
    FormatRun run;
    {
        const auto busy = shell.busy(teamfile().writing);
        run = teamfile().write(FormatPlace{shell.settings(), shell.world()}, request, busy->progress());
    }
    if (!run.ok())
        shell.dialogs().warning(shell.window(), QStringLiteral("Speichern"), run.result.message);
    else
        shell.status(run.result.message);
}

// A team file comes in as a new club or over a club; the club is shown afterwards.
void openteamfile(Shell &shell, const QString &file)
{
    // Kept hidden between uses, so its lists follow every rebuild.
    auto *dialog = shell.window()->findChild<OpenDialog *>(QStringLiteral("frmopen"));
    if (!dialog)
        dialog = new OpenDialog(shell.lists(), shell.window());
    dialog->setfile(file);
    if (dialog->exec() != QDialog::Accepted)
        return;
    FormatRequest request{file};
    if (dialog->newclub())
        request.country = dialog->country();
    else
        request.team = dialog->club();
    const auto run = read(shell, QStringLiteral("Öffnen"),
                          dialog->newclub() ? QStringLiteral("Erstelle Verein...") : QStringLiteral("Aktualisiere Verein..."),
                          teamfile(), request);
    if (!run)
        return;
    if (!run->ok()) {
        if (!run->result.cancelled)
            shell.dialogs().warning(shell.window(), QStringLiteral("Öffnen"), run->result.message);
        else
            shell.status(run->result.message);
        return;
    }
    shell.select(QStringLiteral("T%1").arg(run->team));
    shell.status(run->result.message);
}

void chooseteamfile(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString file = shell.openfile(FileKind::Team, QStringLiteral("Öffnen..."),
                                                  shell.settings().folder(ZorbodatenFolder), {teamfile().filter()}, &filter);
    if (!file.isEmpty())
        openteamfile(shell, file);
}

} // namespace

void installexchange(Shell &shell)
{
    shell.handle(QStringLiteral("mnudateiitem(1)"), [&shell] { chooseteamfile(shell); });
    shell.handlefile(QStringLiteral("tea"), [&shell](const QString &file) { openteamfile(shell, file); });
    shell.handle(QStringLiteral("mnudateiitem(2)"), [&shell] { saveteamfile(shell); });
    shell.handle(QStringLiteral("mnuimportitem(0)"), [&shell] { chooseconfigfile(shell); });
    for (const FileFormat *format : configformats()) {
        const QString words = format->key == QLatin1String("vereine") ? QStringLiteral("Import Vereine")
                                                                       : QStringLiteral("Import Spieler");
        shell.handleimport(format->key, words, [&shell, format](const QString &file) { importconfigfile(shell, *format, file); });
    }
    shell.handle(QStringLiteral("mnuexportitem(0)"), [&shell] { exportconfigfile(shell); });
    // A team file is saved from a stored club on show.
    const auto followshown = [&shell](const QString &key) {
        const bool club = key.size() > 1 && key.front() == QLatin1Char('T') && !key.endsWith(QLatin1Char('_'))
                          && key != QLatin1String("T0");
        shell.setopen(QStringLiteral("mnudateiitem(2)"), club);
    };
    QObject::connect(&shell, &Shell::shown, &shell, followshown);
    followshown(QString());
    installchanges(shell);
}

} // namespace zorbo
