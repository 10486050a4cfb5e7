// Commands of the competition template.
#include "cli/command.h"
#include "core/world.h"
#include "exchange/competitiontemplate.h"

#include <QDir>

namespace zorbo::cli {

namespace {

int makeTemplate(Context &ctx)
{
    return withWorld(ctx, 0, [&](World &world) {
        return world.run([&](Database &db) { return tempvereine(db, ctx.progress(QStringLiteral("Erstelle Vorlage"))); }, {},
                         templatestep());
    });
}

int league(Context &ctx)
{
    return withWorld(ctx, 0, [&](World &world) {
        return world.run([&](Database &db) {
            const QString path = ctx.dir + QStringLiteral("/1_we.cfg");
            ExchangeResult r = templiga(db, path, ctx.progress(QStringLiteral("Schreibe 1_we.cfg")));
            if (r.ok())
                r.result.message = QStringLiteral("%1 Ligen mit %2 Vereinen nach %3 geschrieben.")
                                       .arg(r.nationalTeams)
                                       .arg(r.teams)
                                       .arg(QDir::toNativeSeparators(path));
            return r;
        });
    });
}

const bool registered =
    registerCommand({QStringLiteral("template"), {},
                        QStringLiteral("legt für jede Liga aus e_landkontinent Vereine mit je 20 Spielern an"), makeTemplate})
    && registerCommand({QStringLiteral("league"), {},
                        QStringLiteral("schreibt den Wettbewerb 1_we.cfg in den Programmordner"), league});

} // namespace

} // namespace zorbo::cli
