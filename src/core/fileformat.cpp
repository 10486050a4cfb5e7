#include "core/fileformat.h"

#include "core/gamefiles.h"
#include "platform/dberror.h"

namespace zorbo {

FormatRun runformat(const FileFormat &format, bool read, const FormatPlace &place, const FormatRequest &request,
                    const Progress &progress)
{
    FormatRun run = (read ? format.read : format.write)(place, request, progress);
    if (run.ok() && format.gamefile && place.world && place.world->db()) {
        try {
            rememberfile(*place.world->db(), request.path);
        } catch (const DbError &) {
            // A world that can't note the file asks nothing before the next export.
        }
    }
    return run;
}

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
