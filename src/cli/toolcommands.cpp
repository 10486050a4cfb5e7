// Commands of the transfer market and the tools that keep the data sound.
#include "cli/command.h"
#include "core/fieldcheck.h"
#include "core/world.h"
#include "platform/numbers.h"
#include "tools/clubnames.h"
#include "tools/dbcare.h"
#include "tools/marketfill.h"
#include "tools/playerpictures.h"
#include "tools/squadnumbers.h"
#include "tools/swap.h"

#include <QDir>

namespace zorbo::cli {

namespace {

// Opens the program folder's world, checks the number of arguments and runs
// work with it; work prints and returns the exit code.
int inworld(Context &ctx, qsizetype arguments, const std::function<int(World &)> &work)
{
    if (ctx.args.size() != arguments)
        return ctx.usage(QStringLiteral("Falsche Zahl von Argumenten; »zorbo-cli --help« zeigt den Aufruf."));
    const std::unique_ptr<World> world = ctx.openworld();
    return world ? work(*world) : 1;
}

// The i-th argument as a whole number, or nothing after a message.
std::optional<qint64> number(Context &ctx, int i, const QString &what)
{
    const std::optional<qint64> n = parsewholenumber(ctx.args.at(i));
    if (!n)
        ctx.fail(QStringLiteral("%1 muss eine ganze Zahl sein, nicht »%2«.").arg(what, ctx.args.at(i)));
    return n;
}

int marketfill(Context &ctx)
{
    return inworld(ctx, 0, [&](World &world) {
        const MarketFill fill =
            world.run([&](Database &db) { return spielera4_nach_tmarkt(db, ctx.progress(QStringLiteral("Speichere Spieler"))); },
                      {}, marketfillstep());
        return finish(ctx, fill.result);
    });
}

int swapplayerscommand(Context &ctx)
{
    return inworld(ctx, 2, [&](World &world) {
        const auto p = number(ctx, 0, QStringLiteral("Die Spielernummer"));
        const auto q = p ? number(ctx, 1, QStringLiteral("Die Spielernummer")) : std::nullopt;
        if (!q)
            return 1;
        return finish(ctx, world.run([&](Database &db) { return swapplayers(db, *p, *q); }, {}, swapstep(*p, *q)));
    });
}

int swapfreecommand(Context &ctx)
{
    return inworld(ctx, 2, [&](World &world) {
        const auto id = number(ctx, 0, QStringLiteral("Die Nummer des freien Spielers"));
        const auto p = id ? number(ctx, 1, QStringLiteral("Die Spielernummer")) : std::nullopt;
        if (!p)
            return 1;
        return finish(ctx, world.run([&](Database &db) { return swapfree(db, *id, *p); }, {}, swapfreestep(*id, *p)));
    });
}

int checknumbers(Context &ctx)
{
    return inworld(ctx, 0, [&](World &world) {
        const QList<NamedTeam> teams = clubswithrepeats(*world.db(), ctx.progress(QStringLiteral("Suche Vereine")));
        if (teams.isEmpty())
            ctx.out << "Keine Fehler vorhanden\n";
        for (const NamedTeam &t : teams) {
            ctx.out << t.nummer << ' ' << t.name << '\n';
            for (const SquadLine &line : squadlines(*world.db(), t.nummer))
                ctx.out << "  " << line.text() << " [" << line.player << "]\n";
        }
        return 0;
    });
}

int setnumber(Context &ctx)
{
    return inworld(ctx, 2, [&](World &world) {
        const auto p = number(ctx, 0, QStringLiteral("Die Spielernummer"));
        const auto n = p ? number(ctx, 1, QStringLiteral("Die Rückennummer")) : std::nullopt;
        if (!n)
            return 1;
        return finish(ctx, world.run([&](Database &db) { return setsquadnumber(db, *p, *n); }, {}, squadnumberstep(*p, *n)));
    });
}

int checknames(Context &ctx)
{
    return inworld(ctx, 0, [&](World &world) {
        const QList<NamedTeam> teams = longclubnames(*world.db(), ctx.progress(QStringLiteral("Suche Vereine")));
        if (teams.isEmpty())
            ctx.out << "Keine Fehler vorhanden\n";
        for (const NamedTeam &t : teams)
            ctx.out << t.nummer << ' ' << t.name << " (" << t.name.size() << " Zeichen)\n";
        return 0;
    });
}

int renameclubcommand(Context &ctx)
{
    return inworld(ctx, 2, [&](World &world) {
        const auto n = number(ctx, 0, QStringLiteral("Die Vereinsnummer"));
        if (!n)
            return 1;
        return finish(ctx, world.run([&](Database &db) { return renameclub(db, *n, ctx.args.at(1)); }, {},
                                     renameclubstep(*n, ctx.args.at(1))));
    });
}

int assignpicturescommand(Context &ctx)
{
    return inworld(ctx, 0, [&](World &world) {
        const QString folder = world.settings().folder(ZorbospielerFolder);
        const PictureRun run = assignpictures(*world.db(), folder, systemDecimalSign(), {},
                                              ctx.progress(QStringLiteral("Ordne Bilder zu")));
        if (!run.result)
            return ctx.fail(run.result.message);
        for (const auto &[file, candidates] : run.undecided) {
            ctx.out << file << " – mehrere Spieler, bleibt unverändert:\n";
            for (const PictureCandidate &c : candidates)
                ctx.out << "  " << c.nummer << ' ' << c.line << '\n';
        }
        ctx.out << run.result.message << '\n';
        return 0;
    });
}

int wipe(Context &ctx)
{
    if (ctx.args.removeAll(QStringLiteral("--yes")) == 0)
        return ctx.fail(QStringLiteral("wipe löscht alle Vereine, Länder und Spieler; zur Bestätigung --yes angeben."));
    return inworld(ctx, 0, [&](World &world) {
        return finish(ctx, world.run([&](Database &db) { return del_db(db, ctx.progress(QStringLiteral("Lösche"))); }, {},
                                     wipestep()));
    });
}

int compact(Context &ctx)
{
    // The history is kept unless asked otherwise: only the user knows
    // whether a step of it may still be needed.
    const bool drop = ctx.args.removeAll(QStringLiteral("--drop-history")) > 0;
    return inworld(ctx, 0, [&](World &world) {
        return finish(ctx, comp_db(world, ctx.progress(QStringLiteral("Komprimiere")), drop));
    });
}

const bool registered =
    registerCommand({QStringLiteral("market-fill"), {},
                     QStringLiteral("kopiert die freien Spieler in zufälliger Reihenfolge in den Transfermarkt"), marketfill})
    && registerCommand({QStringLiteral("swap-players"), QStringLiteral("SPIELER SPIELER"),
                        QStringLiteral("zwei Spieler zweier Vereine tauschen die Vereine"), swapplayerscommand})
    && registerCommand({QStringLiteral("swap-free"), QStringLiteral("FREI-ID SPIELER"),
                        QStringLiteral("ein freier Spieler kommt auf den Platz des Spielers, der zu den freien Spielern geht"),
                        swapfreecommand})
    && registerCommand({QStringLiteral("check-numbers"), {},
                        QStringLiteral("zeigt die Vereine mit doppelten Rückennummern und ihre Kader"), checknumbers})
    && registerCommand({QStringLiteral("set-number"), QStringLiteral("SPIELER NUMMER"),
                        QStringLiteral("gibt einem Spieler eine neue Rückennummer (größer als 0)"), setnumber})
    && registerCommand({QStringLiteral("check-names"), {},
                        QStringLiteral("zeigt die Vereine mit Namen über 15 Zeichen"), checknames})
    && registerCommand({QStringLiteral("rename-club"), QStringLiteral("VEREIN NAME"),
                        QStringLiteral("gibt einem Verein einen neuen Namen"), renameclubcommand})
    && registerCommand({QStringLiteral("assign-pictures"), {},
                        QStringLiteral("benennt die Spielerbilder nach den Spielernummern um (eindeutige Fälle)"),
                        assignpicturescommand})
    && registerCommand({QStringLiteral("wipe"), QStringLiteral("--yes"),
                        QStringLiteral("leert die Datenbank und legt den Transfermarkt neu an"), wipe})
    && registerCommand({QStringLiteral("compact"), QStringLiteral("[--drop-history]"),
                        QStringLiteral("komprimiert die Datenbank; --drop-history lässt dabei den Verlauf weg"), compact});

} // namespace

} // namespace zorbo::cli
