#include "core/teamrules.h"

namespace zorbo {

bool blankname(const QString &name)
{
    return name.trimmed().isEmpty();
}

Result checkteamrow(TeamTable table, const QString &name, const QString &nation)
{
    // A team without a name would stand in the tree as an empty line, and a
    // country without one would take its clubs' and players' country away.
    if (blankname(name))
        return Result::failure(QStringLiteral("Das Feld »Teamname lang« ist leer; ein Land oder Verein braucht einen Namen."));
    if (table == TeamTable::Vereine && blankname(nation))
        return Result::failure(QStringLiteral("Das Feld »Land« ist leer; ein Verein braucht ein Land."));
    return Result::success();
}

} // namespace zorbo
