#include "core/fileformat.h"

namespace zorbo {

const FileFormat *findformat(const QList<FileFormat> &formats, const QString &key)
{
    for (const FileFormat &f : formats)
        if (f.key == key)
            return &f;
    return nullptr;
}

QStringList formatfilters(const QList<const FileFormat *> &formats)
{
    QStringList filters;
    for (const FileFormat *format : formats)
        filters << format->filter();
    return filters;
}

} // namespace zorbo
