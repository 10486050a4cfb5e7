// Commands that look through the world: find names, list its problems.
#include "cli/command.h"
#include "core/problems.h"
#include "core/search.h"
#include "core/world.h"

#include <QJsonArray>
#include <QJsonObject>

namespace zorbo::cli {

namespace {


// A problem for scripts: its kind's heading, whether it is a warning, the
// line the list shows and the parts of its place that are known.
QJsonObject problemjson(const Problem &p)
{
    QJsonObject o{{QStringLiteral("art"), problemheading(p.kind)},
                  {QStringLiteral("warnung"), iswarning(p.kind)},
                  {QStringLiteral("text"), p.where.toString()}};
    if (p.where.team >= 0)
        o.insert(p.country ? QStringLiteral("land") : QStringLiteral("verein"), p.where.team);
    if (p.where.player >= 0)
        o.insert(QStringLiteral("spieler"), p.where.player);
    if (!p.where.field.isEmpty())
        o.insert(QStringLiteral("feld"), p.where.field);
    return o;
}

int check(Context &ctx)
{
    const bool json = ctx.takeFlag(QStringLiteral("--json"));
    if (!ctx.args.isEmpty())
        return ctx.usage(QStringLiteral("»check« nimmt außer --json keine Argumente."));
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    const Settings &settings = world->settings();
    const Progress progress = ctx.progress(QStringLiteral("Prüfe die Welt"));
    const ProblemReport report =
        world->run([&](Database &db) { return checkproblems(db, settings, progress); }, QStringLiteral("Prüfen"));
    if (!report.result.ok)
        return ctx.fail(report.result.message);
    if (json) {
        QJsonArray problems;
        for (const Problem &p : report.problems)
            problems.append(problemjson(p));
        ctx.printjson(QJsonObject{{QStringLiteral("fehler"), report.errors()},
                                  {QStringLiteral("warnungen"), report.warnings()},
                                  {QStringLiteral("probleme"), problems}});
    } else {
        for (const QString &line : problemlines(report))
            ctx.out << line << '\n';
    }
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

QJsonArray hitsjson(const QList<SearchHit> &hits)
{
    QJsonArray out;
    for (const SearchHit &h : hits) {
        QJsonObject o{{QStringLiteral("nummer"), h.number}, {QStringLiteral("name"), h.text}};
        if (!h.detail.isEmpty())
            o.insert(QStringLiteral("detail"), h.detail);
        out.append(o);
    }
    return out;
}

int find(Context &ctx)
{
    const bool json = ctx.takeFlag(QStringLiteral("--json"));
    if (ctx.args.isEmpty())
        return ctx.usage(QStringLiteral("»find« braucht einen Suchtext."));
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    SearchIndex &index = SearchIndex::of(*world);
    const SearchResult result = index.find(ctx.args.join(QLatin1Char(' ')));
    if (json) {
        ctx.printjson(QJsonObject{{QStringLiteral("laender"), hitsjson(result.laender)},
                                  {QStringLiteral("vereine"), hitsjson(result.vereine)},
                                  {QStringLiteral("spieler"), hitsjson(result.spieler)}});
        return result.isEmpty() ? 1 : 0;
    }
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
