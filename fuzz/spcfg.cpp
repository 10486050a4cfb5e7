// A 1_sp.cfg from outside: the 17 positional lines of each record, values,
// duplicates, the detection of UTF-8 and its conversion.
#include "exchange/playerconfig.h"
#include "fuzzworld.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    static fuzz::FuzzWorld world;
    const QString path = world.file("1_sp.cfg", data, size);
    Transaction tx(*world.db);
    importspieler(*world.db, path);
    importspieler(*world.db, path, {}, FileEncoding::Utf8);
    return 0;
}
