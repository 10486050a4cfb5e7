#include "resources/resfwriter.h"

#include "resources/bytes.h"
#include "resources/resf.h"

#include <QSaveFile>
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
    QSaveFile out(target);
    const auto failed = [&] {
        return Result::failure(QStringLiteral("Das Archiv %1 lässt sich nicht schreiben.").arg(target));
    };
    if (!out.open(QIODevice::WriteOnly))
        return failed();
    QByteArray head("RESF");
    appendlong(head, qint32(items.size()));
    appendlong(head, qint32(dirpos));
    if (out.write(head) != head.size())
        return failed();
    for (qsizetype i = 0; i < items.size(); ++i) {
        const WappenItem &item = items[i];
        if (type == ResTypeSized) {
            QByteArray length;
            appendlong(length, qint32(item.data.size()));
            if (out.write(length) != length.size())
                return failed();
        }
        if (out.write(item.data) != item.data.size())
            return failed();
        report(progress, int(100 * (i + 1) / items.size()));
    }
    QByteArray tail;
    tail.reserve(items.size() * (8 + ResNameSize));
    for (const WappenItem &item : items) {
        appendlong(tail, type);
        appendlong(tail, qint32(item.offset));
    }
    for (const WappenItem &item : items) {
        QByteArray name = item.name.left(ResNameSize - 1);
        name.replace(' ', '\0');
        tail.append(name);
        tail.append(ResNameSize - name.size(), '\0');
    }
    if (out.write(tail) != tail.size() || !out.commit())
        return failed();
    return Result::success();
}

} // namespace zorbo
