#include "core/sizetext.h"

#include <QLocale>
#include <algorithm>

namespace zorbo {

QString sizetext(qint64 bytes)
{
    // The German form whatever the system's language, as every other text.
    const QLocale german(QLocale::German, QLocale::Germany);
    constexpr qint64 kilo = 1024;
    const qint64 kb = bytes <= 0 ? 0 : std::max<qint64>(1, (bytes + kilo / 2) / kilo);
    if (kb < kilo)
        return german.toString(kb) + QStringLiteral(" kB");
    return german.toString(double(bytes) / double(kilo * kilo), 'f', 1) + QStringLiteral(" MB");
}

} // namespace zorbo
