// A profile file from outside (settings, crest lists, exporter files): the
// readers of sections and keys, and a key written into it.
#include "fuzzworld.h"
#include "platform/profile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    static fuzz::FuzzWorld world;
    const QString path = world.file("datei.ini", data, size);
    const QStringList sections = readinisections(path);
    for (qsizetype i = 0; i < sections.size() && i < 8; ++i) {
        const QStringList lines = readinisection(sections[i], path);
        if (!lines.isEmpty()) {
            const QString key = lines.first().section(QLatin1Char('='), 0, 0);
            readinistring(sections[i], key, path, QStringLiteral("x"));
            readiniint(sections[i], key, path);
        }
    }
    writeini(QStringLiteral("Team"), QStringLiteral("NAME"), QStringLiteral("Größe"), path);
    writeini(sections.value(0, QStringLiteral("Neu")), QStringLiteral("k"), QStringLiteral("v"), path);
    readinistring(QStringLiteral("Team"), QStringLiteral("name"), path);
    return 0;
}
