#include "editor/provisional.h"

#include "core/gamedb.h"

namespace zorbo {

qint64 provisionalnumber(Database &db, const QStringList &keys)
{
    qint64 number = newteamnumber(db);
    for (const QString &key : keys) {
        if (key.size() < 3 || !key.endsWith(QLatin1Char('_')))
            continue;
        bool ok = false;
        const qint64 taken = key.mid(1, key.size() - 2).toLongLong(&ok);
        if (ok && taken >= number)
            number = taken + 1;
    }
    return number;
}

} // namespace zorbo
