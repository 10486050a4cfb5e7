// The archive's header, directory, names and the bounds of each resource.
#include "resources/resf.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    ResArchive archive{QStringLiteral("fuzz.res"), QByteArray(reinterpret_cast<const char *>(data), qsizetype(size))};
    ResHeader header;
    QList<ResEntry> entries;
    if (!readresheader(archive, header) || !readresdir(archive, header, entries))
        return 0;
    for (const ResEntry &entry : entries) {
        badnamereason(entry.name);
        QByteArray bytes;
        resourcebytes(archive, header, entry, bytes);
    }
    return 0;
}
