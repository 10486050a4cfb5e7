// The list of all players from scripts: list with a filter, edit in bulk,
// and the file for spreadsheets out and in.
#include "cli/command.h"
#include "editor/bulkedit.h"
#include "editor/playercsv.h"
#include "editor/playerlist.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace zorbo::cli {

namespace {

const QString usageText = QStringLiteral(
    "players [--filter AUSDRUCK] [--json]                 listet die Spieler\n"
    "  players set --filter AUSDRUCK [--vorschau] ÄNDERUNG...   bearbeitet alle, die der Filter zeigt;\n"
    "      ÄNDERUNG: FELD=WERT (Land, Position, Resteinsätze, Größe, Vorname, Stärke, Maxstärke ...),\n"
    "      Stärke+N / Maxstärke-N (halbe Sterne), Rückennummern, Gesichter, \"Talente löschen\"\n"
    "  players export-csv [--filter AUSDRUCK] DATEI          schreibt die Spieler als CSV (Semikolon, UTF-8)\n"
    "  players import-csv [--neu] [--cp1252] [--vorschau] DATEI   liest sie zurück; --neu legt unbekannte Nummern an\n");

bool takeflag(Context &ctx, const char *name)
{
    return ctx.args.removeAll(QLatin1String(name)) > 0;
}

void printchanges(Context &ctx, const QList<PlayerChange> &changes)
{
    for (const PlayerChange &c : changes) {
        QStringList fields;
        for (const PlayerFieldChange &f : c.fields)
            fields << (c.created ? QStringLiteral("%1 %3").arg(f.field, f.after)
                                 : QStringLiteral("%1 %2 → %3").arg(f.field, f.before, f.after));
        ctx.out << (c.created ? QStringLiteral("neu: ") : QString()) << "Spieler " << c.nummer << " (" << c.name
                << "): " << fields.join(QStringLiteral(", ")) << '\n';
    }
}

// The filter of --filter, all players without one; nothing (and the fault
// told) when it can't be read, or is missing where requiredBy needs it.
std::optional<PlayerFilter> takefilter(Context &ctx, const char *requiredBy = nullptr)
{
    if (!ctx.args.contains(QStringLiteral("--filter"))) {
        if (!requiredBy)
            return PlayerFilter();
        ctx.fail(QStringLiteral("»players %1« braucht --filter (--filter \"\" für alle Spieler).").arg(QLatin1String(requiredBy)));
        return std::nullopt;
    }
    QString error;
    const std::optional<PlayerFilter> f = parsefilter(ctx.takeOption(QStringLiteral("--filter")), &error);
    if (!f)
        ctx.fail(error);
    return f;
}

// True when the arguments left are one file; else the fault told.
bool onefile(Context &ctx, const char *command)
{
    if (ctx.args.size() == 1)
        return true;
    ctx.fail(QStringLiteral("»players %1« braucht eine Datei.").arg(QLatin1String(command)));
    return false;
}

// The world, opened once the arguments are read, with the list on the filter.
struct Listed {
    std::unique_ptr<World> world;
    std::unique_ptr<PlayerQuery> query;
};

Listed openlisted(Context &ctx, const PlayerFilter &filter)
{
    Listed l{ctx.openexistingworld(), nullptr};
    if (l.world) {
        l.query = std::make_unique<PlayerQuery>(*l.world, SearchIndex::of(*l.world));
        l.query->setfilter(filter);
    }
    return l;
}

QJsonValue json(const QVariant &v)
{
    return v.isNull() ? QJsonValue() : QJsonValue(v.toLongLong());
}

int list(Context &ctx)
{
    const std::optional<PlayerFilter> filter = takefilter(ctx);
    if (!filter)
        return 1;
    const bool asJson = takeflag(ctx, "--json");
    if (!ctx.args.isEmpty())
        return ctx.fail(QStringLiteral("Unbekannte Argumente: %1\n").arg(ctx.args.join(QLatin1Char(' '))) + usageText);
    const Listed listed = openlisted(ctx, *filter);
    if (!listed.world)
        return 1;
    PlayerQuery &query = *listed.query;
    const QList<PlayerRow> rows = query.rows(0, int(query.count()));
    if (asJson) {
        QJsonArray all;
        for (const PlayerRow &r : rows) {
            all.append(QJsonObject{{"nummer", r.nummer}, {"frei", r.frei}, {"name", r.name}, {"vorname", r.vorname},
                                   {"verein", r.verein}, {"vereinNummer", r.vereinNr < 0 ? QJsonValue() : QJsonValue(r.vereinNr)},
                                   {"land", r.land}, {"kontinent", r.kontinent}, {"position", json(r.art)},
                                   {"staerke", json(r.staerke)}, {"maxstaerke", json(r.maxstaerke)},
                                   {"groesse", json(r.groesse)}, {"rueckennummer", json(r.rueckennummer)},
                                   {"resteinsaetze", json(r.einsaetze)}});
        }
        ctx.out << QString::fromUtf8(QJsonDocument(all).toJson(QJsonDocument::Indented));
        return 0;
    }
    for (const PlayerRow &r : rows) {
        const QString stars = r.staerke.isNull() ? QString() : starstext(r.staerke.toLongLong()) + QStringLiteral(" Sterne");
        ctx.out << (r.frei ? QStringLiteral("frei #") : QStringLiteral("#")) << r.nummer << ' '
                << (r.vorname + QLatin1Char(' ') + r.name).trimmed() << " – " << r.verein << ", " << r.land << ", "
                << positionname(r.art.toLongLong()) << ", " << stars << '\n';
    }
    ctx.out << countline(rows.size(), query.total()) << '\n';
    return 0;
}

int set(Context &ctx)
{
    const std::optional<PlayerFilter> filter = takefilter(ctx, "set");
    if (!filter)
        return 1;
    const bool preview = takeflag(ctx, "--vorschau");
    QList<PlayerEdit> edits;
    for (const QString &a : ctx.args) {
        QString error;
        const std::optional<PlayerEdit> e = parseedit(a, &error);
        if (!e)
            return ctx.fail(error);
        edits << *e;
    }
    if (edits.isEmpty())
        return ctx.fail(QStringLiteral("»players set« braucht mindestens eine Änderung.\n") + usageText);
    const Listed listed = openlisted(ctx, *filter);
    if (!listed.world)
        return 1;
    World *world = listed.world.get();
    const QList<qint64> players = listed.query->numbers();
    const FacePictures faces(world->settings().folder(GesichtFolder));
    const BulkEditResult r = preview
        ? world->run([&](Database &db) { return bulkedit(db, players, edits, faces, false, 20); }, QStringLiteral("Bearbeiten"))
        : runbulkedit(*world, players, edits, faces);
    if (r.result.ok)
        printchanges(ctx, r.preview.mid(0, 20));
    return finish(ctx, r);
}

int exportcsv(Context &ctx)
{
    const std::optional<PlayerFilter> filter = takefilter(ctx);
    if (!filter || !onefile(ctx, "export-csv"))
        return 1;
    const Listed listed = openlisted(ctx, *filter);
    if (!listed.world)
        return 1;
    return finish(ctx, exportplayercsv(*listed.world->db(), listed.query->numbers(), ctx.args[0]));
}

int importcsv(Context &ctx)
{
    CsvOptions options;
    options.createPlayers = takeflag(ctx, "--neu");
    if (takeflag(ctx, "--cp1252"))
        options.encoding = FileEncoding::Cp1252;
    const bool preview = takeflag(ctx, "--vorschau");
    if (!onefile(ctx, "import-csv"))
        return 1;
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    const QString path = ctx.args[0];
    options.previewRows = 20;
    const CsvImport r = preview ? world->run([&](Database &db) { return importplayercsv(db, path, options, false); },
                                             QStringLiteral("CSV-Import"))
                                : runplayercsvimport(*world, path, options);
    if (r.result.ok)
        printchanges(ctx, r.preview);
    return finish(ctx, r);
}

int players(Context &ctx)
{
    const QString sub = ctx.args.value(0);
    if (sub == QLatin1String("--help") || sub == QLatin1String("-h")) {
        ctx.out << "  " << usageText << '\n' << filterhelp() << '\n';
        return 0;
    }
    if (sub == QLatin1String("set") || sub == QLatin1String("export-csv") || sub == QLatin1String("import-csv"))
        ctx.args.removeFirst();
    if (sub == QLatin1String("set"))
        return set(ctx);
    if (sub == QLatin1String("export-csv"))
        return exportcsv(ctx);
    if (sub == QLatin1String("import-csv"))
        return importcsv(ctx);
    return list(ctx);
}

const bool registered = registerCommand(
    {QStringLiteral("players"), QStringLiteral("[set|export-csv|import-csv] ..."),
     QStringLiteral("alle Spieler: listen, auf einmal bearbeiten, als CSV aus- und einlesen "
                    "(»zorbo-cli players --help« zeigt Aufruf und Filterausdruck)"),
     players});

} // namespace

} // namespace zorbo::cli
