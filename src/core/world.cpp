#include "core/world.h"

#include "core/defaultfolders.h"
#include "core/market.h"

namespace zorbo {

World openworld(const QString &programFolder, const Progress &progress)
{
    World world;
    QString message;
    world.settings = loadsettings(programFolder, &message);
    if (!message.isEmpty())
        world.messages << message;
    world.messages << unpackdefaults(world.settings);
    world.opened = opendb(world.settings.dbpfad());
    if (!world.opened.message.isEmpty())
        world.messages << world.opened.message;
    if (world.db()) {
        try {
            world.marketCreated = ensuretransfermarket(*world.db(), progress);
        } catch (const DbError &e) {
            world.messages << QStringLiteral("Der Transfermarkt lässt sich nicht anlegen: %1").arg(e.text());
        }
    }
    return world;
}

} // namespace zorbo
