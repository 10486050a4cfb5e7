#include "platform/operation.h"

#include <QDir>

namespace zorbo {

Result Result::cancel()
{
    return {false, QStringLiteral("Abgebrochen – es wurde nichts geändert."), true};
}

QString Finding::toString() const
{
    QStringList place;
    if (!file.isEmpty())
        place << QDir::toNativeSeparators(file);
    if (line > 0)
        place << QStringLiteral("Zeile %1").arg(line);
    if (team >= 0)
        place << QStringLiteral("Team %1").arg(team);
    if (player >= 0)
        place << QStringLiteral("Spieler %1").arg(player);
    if (!field.isEmpty())
        place << QStringLiteral("Feld %1").arg(field);
    return place.isEmpty() ? text : place.join(QStringLiteral(", ")) + QStringLiteral(": ") + text;
}

QStringList findinglines(const QList<Finding> &findings)
{
    QStringList lines;
    lines.reserve(findings.size());
    for (const Finding &f : findings)
        lines << f.toString();
    return lines;
}

bool Fault::hasPlace() const
{
    return !m_where.file.isEmpty() || m_where.line > 0 || !m_where.field.isEmpty() || m_where.team >= 0
        || m_where.player >= 0;
}

} // namespace zorbo
