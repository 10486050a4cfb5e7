#include "core/fileformat.h"

namespace zorbo {

QStringList formatfilters(const QList<const FileFormat *> &formats)
{
    QStringList filters;
    for (const FileFormat *format : formats)
        filters << format->filter();
    return filters;
}

} // namespace zorbo
