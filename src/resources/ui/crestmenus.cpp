#include "resources/ui/crestmenus.h"

#include "core/settings.h"
#include "core/ui/dialogs.h"
#include "core/ui/overwrite.h"
#include "core/ui/shell.h"
#include "resources/crestfiles.h"
#include "resources/crestlist.h"
#include "resources/formats.h"
#include "resources/ui/crestimage.h"
#include "resources/ui/crestpicker.h"
#include "resources/ui/crestpicturewindow.h"

#include <QApplication>

namespace zorbo {

namespace {

const FileFormat &crestarchive()
{
    return *resourceformat(QStringLiteral("wappen"));
}

// The outcome of a run of the archive, told as the crest runs tell it.
FormatRun crestrun(Shell &shell, bool read, const QString &file)
{
    const FileFormat &format = crestarchive();
    FormatRun run;
    {
        const auto busy = shell.busy(read ? format.reading : format.writing);
        run = runformat(format, read, FormatPlace{shell.settings(), shell.world()}, {file}, busy->progress());
    }
    if (run.result.cancelled)
        shell.status(run.result.message);
    else
        shell.dialogs().report(shell.window(), QStringLiteral("Wappen"), run.result.message, run.findings, !run.ok());
    return run;
}

// The archive the user picks, beside the game's own; empty when cancelled.
QString crestfile(Shell &shell, bool read)
{
    const QString title = read ? QStringLiteral("Importieren Wappen...") : QStringLiteral("Exportiere Wappen...");
    const QString start = shell.settings().folder(ZorboresFolder) + QStringLiteral("wa.res");
    int filter = 0;
    return read ? shell.openfile(FileKind::Game, title, start, {crestarchive().filter()}, &filter)
                : shell.savefile(FileKind::Game, title, start, {crestarchive().filter()}, &filter);
}

void exportcrests(Shell &shell)
{
    const QString file = crestfile(shell, false);
    if (!file.isEmpty() && mayoverwrite(shell, QStringLiteral("Wappen"), file))
        crestrun(shell, false, file);
}

void importcrests(Shell &shell, const QString &file)
{
    const FormatRun run = crestrun(shell, true, file);
    // An export packs the crests of wa.lst only; the user's list is
    // changed only when asked.
    if (run.ok() && !run.unlisted.isEmpty()
        && shell.dialogs().question(shell.window(), QStringLiteral("Wappen"),
                                    QStringLiteral("%1 Wappen des Archivs fehlen in wa.lst und blieben beim Export draußen. "
                                                   "Sollen sie in wa.lst aufgenommen werden?")
                                        .arg(run.unlisted.size()))) {
        int added = 0;
        const Result listed = addtocrestlist(shell.settings().folder(WappenFolder), run.unlisted, &added);
        if (listed)
            shell.status(QStringLiteral("%1 Wappen in wa.lst aufgenommen.").arg(added));
        else
            shell.dialogs().warning(shell.window(), QStringLiteral("Wappen"), listed.message);
    }
}

void choosecrestarchive(Shell &shell)
{
    const QString file = crestfile(shell, true);
    if (file.isEmpty())
        return;
    shell.rememberimport(file, crestarchive().key);
    importcrests(shell, file);
}

void copykitset(Shell &shell)
{
    Result copied;
    {
        const auto busy = shell.busy(QStringLiteral("Kopiere Trikotsatz..."));
        copied = copymares(shell.settings().kitFolder(), shell.settings().folder(ZorboresFolder));
        QApplication::processEvents();
    }
    if (!copied)
        shell.dialogs().information(shell.window(), QStringLiteral("Fehler"), copied.message);
}

// "Wappen aus Bild" on crest n; the club on show may wear it. The crest
// written, or -1.
int crestfrompicture(Shell &shell, int n)
{
    if (!shell.db() || shell.settings().folder(WappenFolder).isEmpty())
        return -1;
    auto *window = shell.window()->findChild<CrestPictureWindow *>(QStringLiteral("frmwappenbild"));
    if (!window)
        window = new CrestPictureWindow(shell, shell.window());
    const QString key = shell.shownkey();
    const bool team = key.startsWith(QLatin1Char('T')) && !key.endsWith(QLatin1Char('_'));
    window->prepare(n, team ? key.mid(1).toLongLong() : -1);
    window->exec();
    return window->written();
}

std::optional<ChosenCrest> choosecrest(Shell &shell, const QImage &current, const QString &wappennr)
{
    const QString folder = shell.settings().folder(WappenFolder);
    auto *picker = shell.window()->findChild<CrestPicker *>();
    if (!picker) {
        const auto busy = shell.busy(QStringLiteral("Lade Vorschau..."));
        // Every number gets its file now, so the grid and the team tab find one.
        const Result made = ensureallcrests(folder, busy->progress());
        if (!made)
            shell.dialogs().warning(shell.window(), QStringLiteral("Wappenauswahl"), made.message);
        picker = new CrestPicker(folder, shell.window());
        picker->setfrompicture([&shell](int n) { return crestfrompicture(shell, n); });
    }
    picker->prepare(current, wappennr);
    if (picker->exec() != QDialog::Accepted)
        return std::nullopt;
    return ChosenCrest{picker->wappennr(), picker->image()};
}

} // namespace

void installresources(Shell &shell)
{
    shell.handle(QStringLiteral("mnutoolitem(10)"), [&shell] {
        int n = 0;
        const QString key = shell.shownkey();
        if (shell.db() && key.startsWith(QLatin1Char('T')))
            n = shell.db()->scalar(QStringLiteral("SELECT GRAFIK_NR FROM vereine WHERE NUMMER = ?1 UNION ALL "
                                                  "SELECT GRAFIK_NR FROM vereine_national WHERE NUMMER = ?1"),
                                   key.mid(1).toLongLong())
                    .toInt();
        crestfrompicture(shell, n);
    });
    shell.handle(QStringLiteral("mnuimportitem(1)"), [&shell] { choosecrestarchive(shell); });
    shell.handleimport(crestarchive().key, QStringLiteral("Import Wappen"),
                       [&shell](const QString &file) { importcrests(shell, file); });
    shell.handle(QStringLiteral("mnuexportitem(1)"), [&shell] { exportcrests(shell); });
    shell.handle(QStringLiteral("mnuoptionenitem(2)"), [&shell] { copykitset(shell); });
    CrestService crests;
    crests.image = [&shell](int n) {
        QString path;
        const QString folder = shell.settings().folder(WappenFolder);
        if (folder.isEmpty() || !ensurecrest(folder, n, path))
            return QImage();
        return crestimage(path);
    };
    crests.choose = [&shell](const QImage &current, const QString &wappennr) {
        return choosecrest(shell, current, wappennr);
    };
    shell.setcrests(std::move(crests));
}

} // namespace zorbo
