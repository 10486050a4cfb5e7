#include "resources/reslist.h"

#include "resources/gfp.h"
#include "resources/resf.h"

namespace zorbo {

Result listresf(const QString &path, QList<ResListing> &rows)
{
    ResContents contents;
    if (Result r = openresarchive(path, contents); !r)
        return r;
    const auto &[archive, header, entries] = contents;
    rows.clear();
    for (int i = 0; i < int(entries.size()); ++i) {
        const ResEntry &e = entries[i];
        ResListing row;
        row.number = i;
        row.type = e.type;
        row.offset = e.offset;
        row.name = printablename(e.name);
        QByteArray bytes;
        if (Result r = resourcebytes(archive, header, e, bytes); !r) {
            row.problem = r.message;
        } else {
            row.size = bytes.size();
            GfpHeader gfp;
            qint64 length = 0;
            if (readgfpheader(bytes, QString(), gfp, length)) {
                row.width = gfp.width();
                row.height = gfp.height();
            }
        }
        if (const QString why = badnamereason(e.name); !why.isEmpty() && row.problem.isEmpty())
            row.problem = QStringLiteral("Unbrauchbarer Name: %1.").arg(why);
        rows.append(row);
    }
    return Result::success();
}

} // namespace zorbo
