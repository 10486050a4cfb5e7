#include "exchange/teamfilehints.h"

#include "platform/profile.h"

namespace zorbo {

TeamFileHints readteamfilehints(const QString &path)
{
    const QString team = QStringLiteral("Team");
    return {readinistring(team, QStringLiteral("Nation"), path), readinistring(team, QStringLiteral("Name"), path),
            readinistring(team, QStringLiteral("Stadt"), path)};
}

int teamfileclub(const QStringList &entries, const TeamFileHints &hints)
{
    int candidate = -1;
    const QString townAndCountry = hints.stadt + QStringLiteral("  (") + hints.nation + QLatin1Char(')');
    for (int i = 0; i < entries.size(); ++i) {
        const QString &entry = entries[i];
        if (entry.endsWith(townAndCountry))
            candidate = i;
        const qsizetype bracket = entry.lastIndexOf(QStringLiteral(" ("));
        const QString club = bracket < 0 ? entry : entry.left(bracket);
        if (!club.isEmpty() && hints.name.contains(club))
            return i;
    }
    return candidate;
}

} // namespace zorbo
