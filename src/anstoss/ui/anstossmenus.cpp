#include "anstoss/ui/anstossmenus.h"

#include "anstoss/freeplayers.h"
#include "anstoss/league.h"
#include "anstoss/ui/a4opendialog.h"
#include "anstoss/ui/workbench.h"
#include "core/gamedb.h"
#include "core/settings.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QAction>
#include <QFileInfo>
#include <QWidget>
#include <optional>

namespace zorbo {

namespace {

void tell(Shell &shell, const QString &title, const AnstossResult &r)
{
    if (r.result.cancelled)
        shell.status(r.result.message);
    else if (!r.ok() || !r.findings.isEmpty())
        shell.dialogs().report(shell.window(), title, r.result.message, r.findings, !r.ok());
    else
        shell.status(r.result.message);
}

// Reads a file of the given kind once: refused files are told, and one that
// reads as UTF-8 is read so when the user says so. The encoding for the run,
// or nothing when the file can't be read or the user says no.
std::optional<FileEncoding> checkaetfile(Shell &shell, const QString &file, AetKind kind)
{
    AetFile probe;
    Result loaded = probe.load(file, kind);
    if (loaded)
        return FileEncoding::Detect;
    if (probe.looksUtf8()) {
        if (!shell.dialogs().question(shell.window(), QStringLiteral("Import"),
                                      loaded.message + QStringLiteral("\n\nSoll die Datei als UTF-8 gelesen werden?")))
            return std::nullopt;
        loaded = probe.load(file, kind, FileEncoding::Utf8);
        if (loaded)
            return FileEncoding::Utf8;
    }
    shell.dialogs().warning(shell.window(), QStringLiteral("Import"), loaded.message);
    return std::nullopt;
}

// A club file opens in frma4open under its name without the ending.
void openclubfile(Shell &shell, const QString &file)
{
    importa4club(shell, file, QFileInfo(file).completeBaseName());
}

void importclubfile(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString file =
        shell.openfile(FileKind::Exporter, QStringLiteral("Öffnen..."), shell.settings().folder(A4datenFolder),
                                 {QStringLiteral("Anstoss Exporter Team (*.aet)")}, &filter);
    if (!file.isEmpty())
        openclubfile(shell, file);
}

// A league or country file: all its clubs into the free players at once, in
// one run that can be stopped, or one club after the other through frma4open.
void openleaguefile(Shell &shell, const QString &file);

void importleaguefile(Shell &shell)
{
    if (!shell.db())
        return;
    int filter = 0;
    const QString file = shell.openfile(
        FileKind::Exporter, QStringLiteral("Öffnen..."), shell.settings().folder(A4datenFolder),
        {QStringLiteral("Anstoss Exporter Liga (*.lig)"), QStringLiteral("Anstoss Exporter Land (*.lan)")}, &filter);
    if (!file.isEmpty())
        openleaguefile(shell, file);
}

void openleaguefile(Shell &shell, const QString &file)
{
    const std::optional<FileEncoding> encoding = checkaetfile(shell, file, AetKind::League);
    if (!encoding)
        return;
    LeagueList list;
    try {
        list = readleague(file, *encoding);
    } catch (const Fault &fault) {
        shell.dialogs().warning(shell.window(), QStringLiteral("Import"), fault.message());
        return;
    }
    if (shell.dialogs().question(shell.window(), QStringLiteral("Import"),
                                 QStringLiteral("Alle %1 Vereinsdateien der Datei in 'Freie Spieler' importieren?\n\n"
                                                "Mit Nein wird jeder Verein einzeln geöffnet.")
                                     .arg(list.clubs.size()))) {
        AnstossResult r;
        {
            const auto busy = shell.busy(QStringLiteral("Speichere Freie Spieler..."));
            const Progress progress = busy->progress();
            r = shell.run(
                [&](Database &db) {
                    return importleague(
                        db, file, progress, [&](const QString &league) { shell.status(league); }, *encoding);
                },
                {}, freeplayersstep(file));
        }
        tell(shell, QStringLiteral("Import"), r);
        return;
    }
    for (const LeagueClub &club : list.clubs)
        importa4club(shell, club.path, club.name);
}

} // namespace

void importa4club(Shell &shell, const QString &file, const QString &clubname)
{
    const std::optional<FileEncoding> encoding = checkaetfile(shell, file, AetKind::Club);
    if (!encoding)
        return;
    // Kept hidden between uses, so its lists follow every rebuild.
    auto *dialog = shell.window()->findChild<A4OpenDialog *>(QStringLiteral("frma4open"));
    if (!dialog)
        dialog = new A4OpenDialog(shell.lists(), shell.window());
    dialog->setfile(file, clubname, *encoding);
    if (dialog->exec() != QDialog::Accepted)
        return;
    if (dialog->freeplayers()) {
        AnstossResult r;
        {
            const auto busy = shell.busy(QStringLiteral("Speichere Freie Spieler..."));
            const Progress progress = busy->progress();
            r = shell.run([&](Database &db) { return runfreeplayers(db, file, {}, progress, *encoding); }, {},
                          freeplayersstep(file));
        }
        tell(shell, QStringLiteral("Freie Spieler"), r);
        return;
    }
    Workbench bench(shell, file, dialog->club(), shell.window(), *encoding);
    for (int i = 0; i < 4; ++i)
        bench.setimport(i, true);
    bench.exec();
}

void installanstoss(Shell &shell)
{
    QObject::connect(&shell, &Shell::changed, &shell, [&shell](const Change &change) {
        if (!change.everything && !change.tables.contains(QStringLiteral("a4spieler")))
            return;
        if (QAction *button = shell.entry(QStringLiteral("impanstoss4")))
            button->setEnabled(shell.db() && checka4(*shell.db()));
    });
    shell.handle(QStringLiteral("mnuimportitem(2)"), [&shell] { importclubfile(shell); });
    shell.handle(QStringLiteral("mnuimportitem(3)"), [&shell] { importleaguefile(shell); });
    shell.handlefile(QStringLiteral("aet"), [&shell](const QString &file) { openclubfile(shell, file); });
    for (const char *suffix : {"lig", "lan"})
        shell.handlefile(QLatin1String(suffix), [&shell](const QString &file) { openleaguefile(shell, file); });
}

} // namespace zorbo
