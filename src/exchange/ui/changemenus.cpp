// The menu entries that compare worlds and carry changes in change files.
#include "exchange/ui/changemenus.h"

#include "core/fieldcheck.h"
#include "core/settings.h"
#include "exchange/ui/applywindow.h"
#include "exchange/ui/comparewindow.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

namespace zorbo {

namespace {

const QString compareTitle = QStringLiteral("Welten vergleichen");
const QString applyTitle = QStringLiteral("Änderungen anwenden");
const QString exportTitle = QStringLiteral("Änderungen exportieren");
const QString changeFilter = QStringLiteral("Änderungsdatei (*.zae)");

} // namespace

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

// Which of two ways the user takes (0 or 1); -1 for none, or without a world.
int way(Shell &shell, const QString &title, const QString &question, const QString &first, const QString &second)
{
    if (!shell.db())
        return -1;
    return shell.dialogs().choose(shell.window(), title, question, {first, second, QStringLiteral("Abbrechen")});
}

// The file of another world; empty when the user cancels.
QString otherworld(Shell &shell)
{
    int filter = 0;
    return shell.openfile(FileKind::Game, QStringLiteral("Andere Welt"), QStringLiteral("zorbo.mdb"), {QStringLiteral("Welt (*.mdb)")},
                          &filter);
}

void exportchanges(Shell &shell)
{
    const int how = way(shell, exportTitle, QStringLiteral("Welche Änderungen sollen in die Datei?"),
                        QStringLiteral("Ab einem Schritt des Verlaufs"), QStringLiteral("Unterschied zu einer anderen Welt"));
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
        const QString other = otherworld(shell);
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
    if (!path.isEmpty())
        openchangefile(shell, path);
}

void compare(Shell &shell)
{
    const int how = way(shell, compareTitle, QStringLiteral("Womit soll diese Welt verglichen werden?"),
                        QStringLiteral("Andere Welt (zorbo.mdb)"), QStringLiteral("Spieldateien (1_tm.cfg, 1_sp.cfg)"));
    if (how == 0) {
        const QString other = otherworld(shell);
        if (other.isEmpty())
            return;
        CompareWindow window(shell, shell.window());
        if (window.compareworld(other))
            window.exec();
    } else if (how == 1) {
        int filter = 0;
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

void openchangefile(Shell &shell, const QString &path)
{
    if (!shell.db())
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
    shell.handlefile(QStringLiteral("zae"), [&shell](const QString &file) { openchangefile(shell, file); });
}

} // namespace zorbo
