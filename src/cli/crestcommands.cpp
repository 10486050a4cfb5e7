#include "cli/command.h"
#include "core/defaultfolders.h"
#include "resources/crestrun.h"
#include "resources/reslist.h"

namespace zorbo::cli {

namespace {

// The folders as the editor's start-up leaves them, so that a fresh program
// folder has its wa.lst and default.gfp; no database is needed for crests.
QString wappenfolder(Context &ctx)
{
    for (const QString &line : unpackdefaults(ctx.settings()))
        ctx.err << line << '\n';
    return ctx.settings().folder(WappenFolder);
}

// done has %1 for the number of crests and %2 for where they went.
int finish(Context &ctx, const CrestRunReport &run, const QString &done, const QString &where)
{
    for (const QString &line : findinglines(run.findings))
        ctx.err << line << '\n';
    if (!run.result)
        return ctx.fail(run.result.message);
    ctx.out << done.arg(QString::number(run.written), where) << '\n';
    return 0;
}

int importCrests(Context &ctx)
{
    CrestImportOptions options;
    options.addToList = ctx.args.removeAll(QStringLiteral("--add-to-list")) > 0;
    if (ctx.args.size() != 1)
        return ctx.fail(QStringLiteral("Aufruf: zorbo-cli import-crests [--add-to-list] DATEI"));
    const QString wappen = wappenfolder(ctx);
    CrestRunReport run =
        importwappen(ctx.args.first(), wappen, ctx.progress(QStringLiteral("Importiere Wappen...")), options);
    if (run.result && !run.missingFromList.isEmpty() && run.addedToList == 0)
        run.findings << Finding{.text = QStringLiteral("Mit --add-to-list werden diese %1 Wappen in wa.lst angefügt.")
                                            .arg(run.missingFromList.size())};
    return finish(ctx, run, QStringLiteral("%1 Wappen nach %2 geschrieben."), wappen);
}

int exportCrests(Context &ctx)
{
    if (ctx.args.size() != 1)
        return ctx.fail(QStringLiteral("Aufruf: zorbo-cli export-crests DATEI"));
    const QString wappen = wappenfolder(ctx);
    return finish(ctx, exportwappen(ctx.args.first(), wappen, ctx.progress(QStringLiteral("Exportiere Wappen ..."))),
                  QStringLiteral("%1 Wappen in %2 gepackt."), ctx.args.first());
}

int listArchive(Context &ctx)
{
    if (ctx.args.size() != 1)
        return ctx.fail(QStringLiteral("Aufruf: zorbo-cli resf-list DATEI"));
    QList<ResListing> rows;
    if (Result r = listresf(ctx.args.first(), rows); !r)
        return ctx.fail(r.message);
    ctx.out << "Nr\tTyp\tPosition\tName\tGröße\tBild\n";
    for (const ResListing &row : rows) {
        ctx.out << row.number << '\t' << row.type << '\t' << row.offset << '\t' << row.name << '\t';
        if (row.size >= 0)
            ctx.out << row.size;
        else
            ctx.out << '-';
        ctx.out << '\t';
        if (row.width > 0)
            ctx.out << row.width << 'x' << row.height;
        else
            ctx.out << '-';
        if (!row.problem.isEmpty())
            ctx.out << '\t' << row.problem;
        ctx.out << '\n';
    }
    return 0;
}

const bool registered = registerCommand({QStringLiteral("import-crests"), QStringLiteral("[--add-to-list] DATEI"),
                                         QStringLiteral("Wappen aus einem RESF-Archiv (wa.res) in den Wappen-Ordner entpacken; "
                                                        "--add-to-list nimmt Wappen, die wa.lst fehlen, dort auf"),
                                         importCrests})
    && registerCommand({QStringLiteral("export-crests"), QStringLiteral("DATEI"),
                        QStringLiteral("Wappen aus dem Wappen-Ordner nach wa.lst in ein RESF-Archiv packen"), exportCrests})
    && registerCommand({QStringLiteral("resf-list"), QStringLiteral("DATEI"),
                        QStringLiteral("Einträge eines RESF-Archivs mit Typ, Position, Name, Größe und Bildgröße zeigen"),
                        listArchive});

} // namespace

} // namespace zorbo::cli
