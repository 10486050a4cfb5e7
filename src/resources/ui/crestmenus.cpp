#include "resources/ui/crestmenus.h"

#include "core/settings.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "resources/crestfiles.h"
#include "resources/crestlist.h"
#include "resources/crestrun.h"
#include "resources/ui/crestimage.h"
#include "resources/ui/crestpicker.h"

#include <QApplication>

namespace zorbo {

namespace {

const QStringList crestFilters = {QStringLiteral("Zorbo Wappen (wa.res) (wa*.res)")};

void tell(Shell &shell, const Result &result, const QString &done, const QList<Finding> &findings)
{
    if (result.cancelled)
        shell.status(result.message);
    else
        shell.dialogs().report(shell.window(), QStringLiteral("Wappen"), result.ok ? done : result.message, findings,
                               !result.ok);
}

void importcrests(Shell &shell)
{
    const QString wappen = shell.settings().folder(WappenFolder);
    int filter = 0;
    const QString file =
        shell.dialogs().openfile(shell.window(), QStringLiteral("Importieren Wappen..."),
                                 shell.settings().folder(ZorboresFolder) + QStringLiteral("wa.res"), crestFilters, &filter);
    if (file.isEmpty())
        return;
    CrestRunReport run;
    {
        const auto busy = shell.busy(QStringLiteral("Importiere Wappen..."));
        run = importwappen(file, wappen, busy->progress());
    }
    tell(shell, run.result, QStringLiteral("%1 Wappen aus %2 übernommen.").arg(run.written).arg(file), run.findings);
    // An export packs the crests of wa.lst only; the user's list is
    // changed only when asked.
    if (run.result.ok && !run.missingFromList.isEmpty()
        && shell.dialogs().question(shell.window(), QStringLiteral("Wappen"),
                                    QStringLiteral("%1 Wappen des Archivs fehlen in wa.lst und blieben beim Export draußen. "
                                                   "Sollen sie in wa.lst aufgenommen werden?")
                                        .arg(run.missingFromList.size()))) {
        int added = 0;
        const Result listed = addtocrestlist(wappen, run.missingFromList, &added);
        if (listed)
            shell.status(QStringLiteral("%1 Wappen in wa.lst aufgenommen.").arg(added));
        else
            shell.dialogs().warning(shell.window(), QStringLiteral("Wappen"), listed.message);
    }
}

void exportcrests(Shell &shell)
{
    int filter = 0;
    const QString file =
        shell.dialogs().savefile(shell.window(), QStringLiteral("Exportiere Wappen..."),
                                 shell.settings().folder(ZorboresFolder) + QStringLiteral("wa.res"), crestFilters, &filter);
    if (file.isEmpty())
        return;
    CrestRunReport run;
    {
        const auto busy = shell.busy(QStringLiteral("Exportiere Wappen..."));
        run = exportwappen(file, shell.settings().folder(WappenFolder), busy->progress());
    }
    tell(shell, run.result, QStringLiteral("%1 Wappen nach %2 gepackt.").arg(run.written).arg(file), run.findings);
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
    }
    picker->prepare(current, wappennr);
    if (picker->exec() != QDialog::Accepted)
        return std::nullopt;
    return ChosenCrest{picker->wappennr(), picker->image()};
}

} // namespace

void installresources(Shell &shell)
{
    shell.handle(QStringLiteral("mnuimportitem(1)"), [&shell] { importcrests(shell); });
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
