#include "tools/ui/toolsmenus.h"

#include "core/history.h"
#include "core/sizetext.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "tools/dbcare.h"
#include "tools/marketfill.h"
#include "tools/ui/clubnamewindow.h"
#include "tools/ui/picturewindow.h"
#include "tools/ui/squadnumberwindow.h"
#include "tools/ui/transferwindow.h"

#include <QWidget>

namespace zorbo {

namespace {

// The outcome of a run: a stop or what was done in the status bar, a
// failure in a message box.
void tell(Shell &shell, const QString &title, const Result &result, bool warn)
{
    shell.status(result.message);
    if (!result.ok && !result.cancelled && warn)
        shell.dialogs().warning(shell.window(), title, result.message);
}

void fillmarket(Shell &shell)
{
    const QString title = QStringLiteral("Transfermarkt");
    if (!shell.db()
        || !shell.dialogs().question(shell.window(), title,
                                     QStringLiteral("Freie Spieler in Tranfermarkt kopieren (Zufallsauswahl)?")))
        return;
    MarketFill fill;
    {
        const auto busy = shell.busy(QStringLiteral("Speichere Spieler..."));
        fill = shell.run([&](Database &db) { return spielera4_nach_tmarkt(db, busy->progress()); }, {}, marketfillstep());
    }
    // Nothing to copy is said in the status bar only.
    tell(shell, title, fill.result, fill.freePlayers > 0 && fill.slotcount > 0);
}

void wipe(Shell &shell)
{
    const QString title = QStringLiteral("Löschen");
    if (!shell.db() || !shell.dialogs().question(shell.window(), title, QStringLiteral("Datenbankinhalt wirklich löschen!")))
        return;
    Result done;
    {
        const auto busy = shell.busy(QStringLiteral("Lösche Datenbank..."));
        done = shell.run([&](Database &db) { return del_db(db, busy->progress()); }, {}, wipestep());
    }
    tell(shell, title, done, true);
}

void compact(Shell &shell)
{
    const QString title = QStringLiteral("Komprimieren");
    if (!shell.db() || !shell.dialogs().question(shell.window(), title, QStringLiteral("Datenbank komprimieren!")))
        return;
    // The history takes room that only the user can say is no longer needed.
    bool drop = false;
    HistorySize held;
    try {
        held = historysize(*shell.db());
    } catch (const DbError &) {
        // A history that can't be read is the compaction's to report.
    }
    if (held.steps > 0) {
        const QString steps = held.steps == 1 ? QStringLiteral("1 Schritt") : QStringLiteral("%1 Schritte").arg(held.steps);
        drop = shell.dialogs().question(shell.window(), title,
                                        QStringLiteral("Der Verlauf hält %1 (%2). Soll er beim Komprimieren gelöscht werden? "
                                                       "Dann lässt sich nichts davon mehr rückgängig machen.")
                                            .arg(steps, sizetext(held.bytes)));
    }
    Result done;
    {
        const auto busy = shell.busy(QStringLiteral("Komprimiere Datenbank..."));
        done = comp_db(*shell.world(), busy->progress(), drop);
    }
    tell(shell, title, done, true);
}

// A tool window, made once and kept hidden between uses, shown modal.
template <typename Window>
Window *toolwindow(Shell &shell, const QString &name)
{
    auto *window = shell.window()->findChild<Window *>(name);
    return window ? window : new Window(shell, shell.window());
}

template <typename Window>
void showtool(Shell &shell, const QString &name)
{
    if (shell.db())
        toolwindow<Window>(shell, name)->exec();
}

void showtransfers(Shell &shell)
{
    if (!shell.db())
        return;
    auto *window = toolwindow<TransferWindow>(shell, QStringLiteral("frmtransmarkt"));
    window->loadfreispielerland();
    window->exec();
}

} // namespace

void installtools(Shell &shell)
{
    shell.handle(QStringLiteral("transmarkt_item(0)"), [&shell] { fillmarket(shell); });
    shell.handle(QStringLiteral("transmarkt_item(1)"), [&shell] { showtransfers(shell); });
    shell.handle(QStringLiteral("mnuoptionenitem(6)"), [&shell] { wipe(shell); });
    shell.handle(QStringLiteral("mnuoptionenitem(7)"), [&shell] { compact(shell); });
    shell.handle(QStringLiteral("mnutoolitem(0)"), [&shell] {
        if (!shell.db())
            return;
        auto *window = toolwindow<PictureWindow>(shell, QStringLiteral("frmspielerbild"));
        window->refresh();
        window->exec();
    });
    shell.handle(QStringLiteral("mnutoolitem(5)"),
                 [&shell] { showtool<SquadNumberWindow>(shell, QStringLiteral("frmrueckennummer")); });
    shell.handle(QStringLiteral("mnutoolitem(6)"), [&shell] { showtool<ClubNameWindow>(shell, QStringLiteral("frmteamname")); });
}

} // namespace zorbo
