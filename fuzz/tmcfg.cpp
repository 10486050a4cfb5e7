// A 1_tm.cfg from outside: records and their forms, values, squad lists, the
// detection of UTF-8 and its conversion.
#include "exchange/teamconfigreader.h"
#include "fuzzworld.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    static fuzz::FuzzWorld world;
    const QString path = world.file("1_tm.cfg", data, size);
    // Rolled back, so that every input meets the same empty world.
    Transaction tx(*world.db);
    importvereine(*world.db, path);
    importvereine(*world.db, path, {}, FileEncoding::Utf8);
    return 0;
}
