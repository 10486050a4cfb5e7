#include "exchange/teamfilehints.h"

#include "platform/profilefile.h"

namespace zorbo {

TeamFileHints readteamfilehints(const QString &path)
{
    // One parse for the three keys; a file beyond any profile gives no hints.
    ProfileFile profile;
    profile.load(path);
    const auto read = [&](const char *key) {
        // Trimmed of blanks only, as the profile reader gives values back.
        QString v = profile.value(QStringLiteral("Team"), QLatin1String(key)).value_or(QString());
        while (v.startsWith(QLatin1Char(' ')))
            v.remove(0, 1);
        while (v.endsWith(QLatin1Char(' ')))
            v.chop(1);
        return v;
    };
    return {read("Nation"), read("Name"), read("Stadt")};
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
