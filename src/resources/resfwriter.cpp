#include "resources/resfwriter.h"

#include "resources/bytes.h"
#include "resources/resf.h"
#include "platform/safefile.h"

#include <limits>

namespace zorbo {

qint64 resoffsets(QList<WappenItem> &items, qint32 type)
{
    const qint64 extra = type == ResTypeSized ? 4 : 0;
    qint64 at = ResHeaderSize;
    for (WappenItem &item : items) {
        item.offset = at;
        at += item.data.size() + extra;
    }
    const qint64 end = at + qint64(items.size()) * (8 + ResNameSize);
    if (end > std::numeric_limits<qint32>::max())
        return -1;
    return at;
}

Result packresf(const QString &target, qint32 type, QList<WappenItem> items, const Progress &progress)
{
    const qint64 dirpos = resoffsets(items, type);
    if (dirpos < 0)
        return Result::failure(QStringLiteral("Das Archiv %1 würde größer als 2 GB.").arg(target));
    // Built in memory and written in one go: a thousand crests make a few
    // megabytes, and the target is replaced only by a whole archive.
    QByteArray out("RESF");
    out.reserve(dirpos + items.size() * (8 + ResNameSize));
    appendlong(out, qint32(items.size()));
    appendlong(out, qint32(dirpos));
    for (qsizetype i = 0; i < items.size(); ++i) {
        const WappenItem &item = items[i];
        if (type == ResTypeSized)
            appendlong(out, qint32(item.data.size()));
        out.append(item.data);
        report(progress, i + 1, items.size());
    }
    for (const WappenItem &item : items) {
        appendlong(out, type);
        appendlong(out, qint32(item.offset));
    }
    for (const WappenItem &item : items) {
        QByteArray name = item.name.left(ResNameSize - 1);
        name.replace(' ', '\0');
        out.append(name);
        out.append(ResNameSize - name.size(), '\0');
    }
    if (Result r = replacefile(target, out); !r)
        return Result::failure(QStringLiteral("Das Archiv %1 lässt sich nicht schreiben: %2").arg(target, r.message));
    return Result::success();
}

} // namespace zorbo
