#include "cli/command.h"
#include "resources/reslist.h"

namespace zorbo::cli {

namespace {

int listArchive(Context &ctx)
{
    if (ctx.args.size() != 1)
        return ctx.usage(QStringLiteral("Aufruf: zorbo-cli resf-list DATEI"));
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

const bool registered = registerCommand({QStringLiteral("resf-list"), QStringLiteral("DATEI"),
                        QStringLiteral("Einträge eines RESF-Archivs mit Typ, Position, Name, Größe und Bildgröße zeigen"),
                        listArchive});

} // namespace

} // namespace zorbo::cli
