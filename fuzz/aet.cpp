// An exporter file from outside (.aet, .lig, .lan): the loader's checks, the
// free players, the workbench's two saves over a club of 20, and the league
// reader with its search for club files.
#include "anstoss/freeplayers.h"
#include "anstoss/importsave.h"
#include "anstoss/league.h"
#include "fuzzworld.h"
#include "platform/dberror.h"

namespace {

struct AetWorld : zorbo::fuzz::FuzzWorld {
    static constexpr qint64 club = 2;

    AetWorld()
    {
        db->exec(QStringLiteral("INSERT INTO vereine_national (NUMMER, NAME) VALUES (1, 'Deutschland');"
                                "INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (2, 'Verein', 'Deutschland');"));
        for (int i = 0; i < 20; ++i) {
            db->run(QStringLiteral("INSERT INTO spieler (NUMMER, NAME) VALUES (?1, 'Spieler')"), 10 + i);
            db->run(QStringLiteral("INSERT INTO vereinspieler VALUES (2, ?1)"), 10 + i);
        }
    }
};

void saves(zorbo::Database &db, const zorbo::AetFile &file)
{
    using namespace zorbo;
    importfreeplayers(db, file);
    TeamImport team = teamfromfile(db, file, AetWorld::club);
    team.team = team.stadium = team.kits = true;
    saveimportteam(db, file, AetWorld::club, team, 0);
    const int count = aetplayercount(file);
    QList<SquadEntry> squad;
    for (int i = 0; i < 20; ++i)
        squad.append(count > 0 ? SquadEntry{true, i % count} : SquadEntry{false, 10 + i});
    saveimportplayers(db, file, AetWorld::club, squad);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    static AetWorld world;
    // Rolled back, so that every input meets the same world.
    Transaction tx(*world.db);
    const QString path = world.file("verein.aet", data, size);
    for (const FileEncoding encoding : {FileEncoding::Detect, FileEncoding::Utf8}) {
        AetFile file;
        if (!file.load(path, AetKind::Club, encoding))
            continue;
        // Refusals of the file's values stop the run as they stop a window's.
        try {
            saves(*world.db, file);
        } catch (const Fault &) {
        } catch (const DbError &) {
        }
    }
    const QString league = world.file("liga.lan", data, size);
    try {
        readleague(league);
    } catch (const Fault &) {
    }
    return 0;
}
