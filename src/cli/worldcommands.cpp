// Commands that set up and inspect a program folder.
#include "cli/command.h"
#include "core/gamedb.h"
#include "core/world.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace zorbo::cli {

namespace {

int init(Context &ctx)
{
    const std::unique_ptr<World> world = ctx.startworld();
    if (!world->db())
        return ctx.fail(QStringLiteral("Die Welt in %1 ist nicht bereit.").arg(ctx.dir));
    ctx.out << "Welt bereit: " << world->settings().dbpfad() << '\n';
    return 0;
}

int info(Context &ctx)
{
    const bool json = ctx.takeFlag(QStringLiteral("--json"));
    if (!ctx.args.isEmpty())
        return ctx.usage(QStringLiteral("»info« nimmt außer --json keine Argumente."));
    const QString path = ctx.dir + QStringLiteral("/zorbo.mdb");
    if (!QFileInfo::exists(path))
        return ctx.fail(QStringLiteral("In %1 liegt keine zorbo.mdb; »zorbo-cli init« legt eine an.").arg(ctx.dir));
    const OpenedDb opened = opendb(path);
    if (!opened.db)
        return ctx.fail(opened.message);
    try {
        QJsonArray rows;
        for (const auto &[table, count] : tablecounts(*opened.db)) {
            if (json)
                rows.append(QJsonObject{{QStringLiteral("tabelle"), table}, {QStringLiteral("zeilen"), count}});
            else
                ctx.out << table.leftJustified(24) << ' ' << count << '\n';
        }
        if (json)
            ctx.printjson(rows);
    } catch (const DbError &e) {
        ctx.out.flush();
        return ctx.fail(QStringLiteral("Die Datenbank %1 lässt sich nicht lesen: %2").arg(path, e.text()));
    }
    return 0;
}

const bool registered = registerCommand({QStringLiteral("init"), {},
                                         QStringLiteral("legt eine neue Welt an (Einstellungen, Datenbank, Ordner, Transfermarkt)"), init})
    && registerCommand({QStringLiteral("info"), {}, QStringLiteral("zeigt die Zahl der Zeilen jeder Tabelle"), info});

} // namespace

} // namespace zorbo::cli
