// Commands of the world's history: its steps, undo and redo, restore points.
#include "cli/command.h"
#include "core/history.h"
#include "core/sizetext.h"
#include "core/world.h"
#include "core/fieldcheck.h"

#include <QJsonArray>
#include <QJsonObject>
#include <limits>

namespace zorbo::cli {

namespace {

QString when(const QDateTime &time)
{
    return time.toString(QStringLiteral("dd.MM.yyyy hh:mm"));
}


int history(Context &ctx)
{
    const bool json = ctx.takeFlag(QStringLiteral("--json"));
    if (!ctx.args.isEmpty())
        return ctx.usage(QStringLiteral("»history« nimmt außer --json keine Argumente."));
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    const QList<HistoryStep> steps = world->history();
    if (json) {
        QJsonArray list;
        for (auto it = steps.crbegin(); it != steps.crend(); ++it)
            list.append(QJsonObject{{QStringLiteral("schritt"), it->id},
                                    {QStringLiteral("zeit"), it->time.toString(Qt::ISODate)},
                                    {QStringLiteral("text"), it->text},
                                    {QStringLiteral("rueckgaengig"), it->undone}});
        return ctx.printjson(list);
    }
    if (steps.isEmpty())
        ctx.out << "Der Verlauf ist leer.\n";
    for (auto it = steps.crbegin(); it != steps.crend(); ++it) {
        ctx.out << it->id << "  " << when(it->time) << "  " << it->text;
        if (it->undone)
            ctx.out << "  (rückgängig gemacht)";
        ctx.out << '\n';
    }
    return 0;
}

// The one optional argument, a whole number from 1 to max, fallback when
// it is left out; nothing after a message, and wrong holds the exit code.
std::optional<qint64> countargument(Context &ctx, qint64 fallback, qint64 max, const QString &what, int &wrong)
{
    if (ctx.args.size() > 1) {
        wrong = ctx.usage(QStringLiteral("Falsche Zahl von Argumenten; »zorbo-cli --help« zeigt den Aufruf."));
        return std::nullopt;
    }
    if (ctx.args.isEmpty())
        return fallback;
    const std::optional<qint64> n = parsewholenumber(ctx.args.first());
    if (!n || *n < 1 || *n > max) {
        wrong = ctx.usage(QStringLiteral("%1 muss eine ganze Zahl größer als 0 sein, nicht »%2«.").arg(what, ctx.args.first()));
        return std::nullopt;
    }
    return n;
}

// undo [N] and redo [N]: N steps, one when not given.
int move(Context &ctx, bool back)
{
    int wrong = 0;
    const std::optional<qint64> count =
        countargument(ctx, 1, std::numeric_limits<int>::max(), QStringLiteral("Die Zahl der Schritte"), wrong);
    if (!count)
        return wrong;
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    const Progress progress = ctx.progress(back ? QStringLiteral("Mache rückgängig") : QStringLiteral("Stelle wieder her"));
    const int code = finish(ctx, back ? world->undo(int(*count), progress) : world->redo(int(*count), progress));
    if (const qint64 broken = world->brokenstep())
        ctx.err << QStringLiteral("Mit »zorbo-cli drop-history %1« lässt sich der Verlauf ab diesem Schritt löschen.\n").arg(broken);
    return code;
}

// drop-history [SCHRITT]: the whole history, or a step and what lies beyond it.
int drop(Context &ctx)
{
    int wrong = 0;
    const std::optional<qint64> from =
        countargument(ctx, 0, std::numeric_limits<qint64>::max(), QStringLiteral("Die Nummer des Schritts"), wrong);
    if (!from)
        return wrong;
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    return finish(ctx, world->dropsteps(*from));
}

int listpoints(Context &ctx)
{
    const bool json = ctx.takeFlag(QStringLiteral("--json"));
    if (!ctx.args.isEmpty())
        return ctx.usage(QStringLiteral("»restore-points« nimmt außer --json keine Argumente."));
    const QList<RestorePoint> points = restorepoints(ctx.dir);
    if (json) {
        // Counts a point's file could not tell are null.
        const auto count = [](qint64 n) { return n < 0 ? QJsonValue() : QJsonValue(n); };
        QJsonArray list;
        for (const RestorePoint &p : points)
            list.append(QJsonObject{{QStringLiteral("name"), p.name},
                                    {QStringLiteral("zeit"), p.time.toString(Qt::ISODate)},
                                    {QStringLiteral("grund"), p.reason},
                                    {QStringLiteral("vonhand"), p.byhand},
                                    {QStringLiteral("bytes"), p.size},
                                    {QStringLiteral("vereine"), count(p.clubs)},
                                    {QStringLiteral("spieler"), count(p.players)}});
        return ctx.printjson(list);
    }
    if (points.isEmpty())
        ctx.out << "Es gibt keine Wiederherstellungspunkte.\n";
    const auto count = [](qint64 n) { return n < 0 ? QStringLiteral("?") : QString::number(n); };
    for (const RestorePoint &p : points)
        ctx.out << p.name << "  " << when(p.time) << "  " << p.reason << (p.byhand ? " (von Hand)" : "") << "  "
                << sizetext(p.size) << "  "
                << count(p.clubs) << " Vereine  " << count(p.players) << " Spieler\n";
    return 0;
}

// A command on one restore point, named by its one argument.
int onpoint(Context &ctx, const QString &usage, const std::function<Result(World &world, const QString &name)> &work)
{
    if (ctx.args.size() != 1)
        return ctx.usage(usage);
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    return finish(ctx, work(*world, ctx.args.first()));
}

int restore(Context &ctx)
{
    return onpoint(ctx, QStringLiteral("»restore« braucht den Namen eines Wiederherstellungspunkts (siehe restore-points)."),
                   [&](World &world, const QString &name) {
                       return world.restore(name, ctx.progress(QStringLiteral("Stelle wieder her")));
                   });
}

// restore-point NAME: a point made by hand; delete-restore-point NAME.
int makepoint(Context &ctx)
{
    return onpoint(ctx, QStringLiteral("»restore-point« braucht einen Namen für den Wiederherstellungspunkt."),
                   [](World &world, const QString &name) { return world.makerestorepoint(name); });
}

int deletepoint(Context &ctx)
{
    return onpoint(ctx,
                   QStringLiteral("»delete-restore-point« braucht den Namen eines Wiederherstellungspunkts (siehe "
                                  "restore-points)."),
                   [](World &world, const QString &name) { return world.removerestorepoint(name); });
}

const bool registered =
    registerCommand({QStringLiteral("history"), {},
                     QStringLiteral("zeigt die Schritte des Verlaufs, den neuesten zuerst"), history})
    && registerCommand({QStringLiteral("undo"), QStringLiteral("[N]"),
                        QStringLiteral("macht die letzten N Schritte rückgängig (sonst einen)"),
                        [](Context &ctx) { return move(ctx, true); }})
    && registerCommand({QStringLiteral("redo"), QStringLiteral("[N]"),
                        QStringLiteral("stellt N rückgängig gemachte Schritte wieder her (sonst einen)"),
                        [](Context &ctx) { return move(ctx, false); }})
    && registerCommand({QStringLiteral("drop-history"), QStringLiteral("[SCHRITT]"),
                        QStringLiteral("löscht den Verlauf, oder einen Schritt und die, die nur über ihn erreichbar sind"),
                        drop})
    && registerCommand({QStringLiteral("restore-points"), {},
                        QStringLiteral("zeigt die Wiederherstellungspunkte, den neuesten zuerst"), listpoints})
    && registerCommand({QStringLiteral("restore"), QStringLiteral("NAME"),
                        QStringLiteral("holt die Welt eines Wiederherstellungspunkts zurück (die jetzige wird vorher gesichert)"),
                        restore})
    && registerCommand({QStringLiteral("restore-point"), QStringLiteral("NAME"),
                        QStringLiteral("legt von Hand einen Wiederherstellungspunkt an, der nie von selbst gelöscht wird"),
                        makepoint})
    && registerCommand({QStringLiteral("delete-restore-point"), QStringLiteral("NAME"),
                        QStringLiteral("löscht einen Wiederherstellungspunkt (Dateiname wie bei restore-points)"), deletepoint});

} // namespace

} // namespace zorbo::cli
