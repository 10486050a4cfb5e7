#include "core/fieldcheck.h"

namespace zorbo {

std::optional<qint64> parsewholenumber(const QString &text)
{
    const QString t = text.trimmed();
    if (t.isEmpty())
        return std::nullopt;
    bool ok = false;
    const qint64 value = t.toLongLong(&ok);
    if (!ok || value < INT32_MIN || value > INT32_MAX)
        return std::nullopt;
    return value;
}

Result checkwholenumber(const QString &caption, const QString &text, qint64 *value)
{
    const auto parsed = parsewholenumber(text);
    if (!parsed) {
        QString field = caption;
        if (field.endsWith(QLatin1Char(':')))
            field.chop(1);
        if (text.trimmed().isEmpty())
            return Result::failure(QStringLiteral("Das Feld »%1« ist leer; es braucht eine ganze Zahl.").arg(field));
        return Result::failure(QStringLiteral("Das Feld »%1« enthält »%2«; es braucht eine ganze Zahl.").arg(field, text));
    }
    if (value)
        *value = *parsed;
    return Result::success();
}

} // namespace zorbo
