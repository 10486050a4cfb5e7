// Commands that look through the world: find names, list its problems.
#include "cli/command.h"
#include "core/problems.h"
#include "core/search.h"
#include "core/world.h"


namespace zorbo::cli {

namespace {


int check(Context &ctx)
{
    if (!ctx.args.isEmpty())
        return ctx.fail(QStringLiteral("»check« nimmt keine Argumente."));
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    const Settings &settings = world->settings();
    const Progress progress = ctx.progress(QStringLiteral("Prüfe die Welt"));
    const ProblemReport report =
        world->run([&](Database &db) { return checkproblems(db, settings, progress); }, QStringLiteral("Prüfen"));
    if (!report.result.ok)
        return ctx.fail(report.result.message);
    for (const QString &line : problemlines(report))
        ctx.out << line << '\n';
    return report.errors() > 0 ? 1 : 0;
}

void printhits(Context &ctx, const QString &heading, const QList<SearchHit> &hits)
{
    if (hits.isEmpty())
        return;
    ctx.out << heading << ":\n";
    for (const SearchHit &h : hits) {
        ctx.out << "  " << h.text << " (#" << h.number << ')';
        if (!h.detail.isEmpty())
            ctx.out << " – " << h.detail;
        ctx.out << '\n';
    }
}

int find(Context &ctx)
{
    if (ctx.args.isEmpty())
        return ctx.fail(QStringLiteral("»find« braucht einen Suchtext."));
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    SearchIndex index(*world);
    const SearchResult result = index.find(ctx.args.join(QLatin1Char(' ')));
    printhits(ctx, QStringLiteral("Länder"), result.laender);
    printhits(ctx, QStringLiteral("Vereine"), result.vereine);
    printhits(ctx, QStringLiteral("Spieler"), result.spieler);
    if (result.isEmpty()) {
        ctx.out << "Nichts gefunden.\n";
        return 1;
    }
    return 0;
}

const bool registered = registerCommand(
    {QStringLiteral("find"), QStringLiteral("TEXT"),
     QStringLiteral("findet Länder, Vereine und Spieler, deren Name TEXT enthält (ohne Rücksicht auf Groß- und "
                    "Kleinschreibung und Akzente); #NUMMER findet die Nummer"),
     find}) && registerCommand(
    {QStringLiteral("check"), {},
     QStringLiteral("listet, woran das Spiel oder der Editor sich stoßen würde; Rückgabe 1 bei Problemen, 0 bei nur Warnungen"),
     check});

} // namespace

} // namespace zorbo::cli
