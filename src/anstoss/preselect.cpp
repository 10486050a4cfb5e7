#include "anstoss/preselect.h"

namespace zorbo {

int a4preselect(const QStringList &entries, const QString &name, const QString &stadt, const QString &land)
{
    const QString tail = QLatin1Char(' ') + stadt + QStringLiteral(" (") + land + QLatin1Char(')');
    int found = -1;
    for (int i = 0; i < entries.size(); ++i) {
        const QString &t = entries[i];
        if (t.right(tail.size()) == tail)
            found = i;
        // The name part: up to the blank before the last "(".
        const qsizetype open = t.lastIndexOf(QLatin1Char('('));
        const QString namepart = open < 0 ? t : t.left(qMax<qsizetype>(open - 1, 0));
        if (namepart.contains(name, Qt::CaseSensitive))
            return i;
    }
    return found;
}

} // namespace zorbo
