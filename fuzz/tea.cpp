// A team file from outside, opened as a new club and over a club with a
// squad of three: profile parsing, defaults, numbers, ranges, lengths.
#include "exchange/teamfileopen.h"
#include "fuzzworld.h"

namespace {

struct TeaWorld : zorbo::fuzz::FuzzWorld {
    TeaWorld()
    {
        db->exec(QStringLiteral("INSERT INTO vereine_national (NUMMER, NAME) VALUES (1, 'Land');"
                                "INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (2, 'Verein', 'Land');"
                                "INSERT INTO spieler (NUMMER, NAME) VALUES (10, 'a'), (11, 'b'), (12, 'c');"
                                "INSERT INTO vereinspieler VALUES (2, 10), (2, 11), (2, 12);"));
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    static TeaWorld world;
    const QString path = world.file("team.tea", data, size);
    Transaction tx(*world.db);
    openteamnew(*world.db, path, QStringLiteral("Land"));
    openteamreplace(*world.db, path, 2, {}, FileEncoding::Utf8);
    return 0;
}
