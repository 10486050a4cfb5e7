#include "core/world.h"

#include "core/defaultfolders.h"
#include "core/market.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace zorbo {

World::~World() = default;

World::Watch::Watch(World &world, bool holding) : m_world(world), m_holding(holding)
{
    // Held pages that outgrow the cache would be looked over for one to
    // write out at every page the run touches: the cache grows with them.
    if (m_holding) {
        m_cachesize = m_world.m_db->scalar(QStringLiteral("PRAGMA cache_size")).toLongLong();
        m_world.m_db->exec(QStringLiteral("PRAGMA cache_spill = OFF; PRAGMA cache_size = -262144"));
    }
    m_world.m_pending = {};
    m_world.m_told = 0;
    m_world.m_squadRows.clear();
    m_world.m_playerRows.clear();
    m_world.m_teamRows.clear();
    m_world.m_lastTable.clear();
    m_world.m_changesBefore = m_world.m_db->totalChanges();
    m_world.m_watching = true;
    m_world.m_db->setUpdateHook(
        [w = &m_world](RowChange change, const char *table, qint64 rowid) { w->noted(change, table, rowid); });
}

World::Watch::~Watch()
{
    m_world.m_recorder.reset();
    m_world.m_replacing = false;
    m_world.m_db->setUpdateHook({});
    m_world.m_watching = false;
    if (m_holding) {
        try {
            m_world.m_db->exec(QStringLiteral("PRAGMA cache_spill = ON; PRAGMA cache_size = %1").arg(m_cachesize));
        } catch (const DbError &) {
            // Only the memory a later run takes depends on it.
        }
    }
}

void World::noted(RowChange change, const char *table, qint64 rowid)
{
    ++m_told;
    if (m_lastTable != table) {
        m_lastTable = table;
        // The history is no part of the world, and the squads' rows are
        // known by the view that everyone reads them through.
        if (qstricmp(table, "kaderzeilen") == 0)
            m_pending.tables.insert(QStringLiteral("vereinspieler"));
        else if (qstricmp(table, "verlauf") != 0)
            m_pending.tables.insert(QString::fromUtf8(table));
    }
    // vereine, vereine_national and spieler have NUMMER as their INTEGER
    // PRIMARY KEY, so the rowid is the number.
    if (qstricmp(table, "spieler") == 0)
        m_playerRows.push_back(rowid);
    else if (qstricmp(table, "vereine") == 0 || qstricmp(table, "vereine_national") == 0)
        m_teamRows.push_back(rowid);
    else if (qstricmp(table, "kaderzeilen") == 0 && change != RowChange::Delete)
        m_squadRows.append(rowid); // the club is looked up before the commit
}

namespace {

void gather(QSet<qint64> &into, std::vector<qint64> &rows)
{
    into.reserve(into.size() + qsizetype(rows.size()));
    for (qint64 row : rows)
        into.insert(row);
    rows.clear();
}

} // namespace

void World::settle()
{
    gather(m_pending.players, m_playerRows);
    gather(m_pending.teams, m_teamRows);
    // The engine counts the rows a DELETE without WHERE clears, the hook
    // does not see them.
    if (m_db->totalChanges() - m_changesBefore > m_told)
        m_pending.everything = true;
    // When anything may have changed, the clubs of single squad rows tell
    // nobody more; a whole import would look up each of its rows.
    if (m_squadRows.isEmpty() || m_pending.everything)
        return;
    // Many rows, as an import writes them, are read in one pass over their
    // span of rowids rather than looked up one by one.
    if (m_squadRows.size() > 1000) {
        std::sort(m_squadRows.begin(), m_squadRows.end());
        Statement span = m_db->prepare(QStringLiteral("SELECT rowid, verein FROM kaderzeilen WHERE rowid BETWEEN ?1 AND ?2 "
                                                      "ORDER BY rowid"));
        span.bindAll(m_squadRows.first(), m_squadRows.last());
        auto next = m_squadRows.cbegin();
        while (span.step() && next != m_squadRows.cend()) {
            const qint64 row = span.integer(0);
            while (next != m_squadRows.cend() && *next < row)
                ++next;
            if (next != m_squadRows.cend() && *next == row && !span.isNull(1))
                m_pending.teams.insert(span.integer(1));
        }
        return;
    }
    Statement club = m_db->prepare(QStringLiteral("SELECT verein FROM kaderzeilen WHERE rowid = ?1"));
    for (qint64 row : std::as_const(m_squadRows)) {
        club.bind(1, row);
        if (club.step() && !club.isNull(0))
            m_pending.teams.insert(club.integer(0));
        club.reset();
    }
}

void World::publish(bool committed)
{
    const Change change = std::exchange(m_pending, Change());
    m_squadRows.clear();
    if (committed && !change.isEmpty())
        emit changed(change);
}

Result World::closedwhile(const std::function<Result(const QString &path)> &work)
{
    if (!m_db)
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (m_watching)
        return Result::failure(QStringLiteral("Die Datenbank lässt sich während eines Laufs nicht schließen."));
    const QString path = m_db->path();
    m_db.reset();
    Result done = work(path);
    OpenedDb opened = opendb(path);
    m_dbState = opened.state;
    m_db = std::move(opened.db);
    if (!m_db && done)
        done = Result::failure(opened.message);
    Change everything;
    everything.everything = true;
    emit changed(everything);
    return done;
}

namespace {

// What runs that were killed leave behind and only they write: half copies
// of restore points with their journals, a half compacted copy.
void removeleftovers(const QString &programFolder)
{
    QDir points(restorepointfolder(programFolder));
    for (const QString &name :
         points.entryList({QStringLiteral("*.mdb.teil"), QStringLiteral("*.teil-journal")}, QDir::Files | QDir::Hidden))
        points.remove(name);
    const QString copy = programFolder + QStringLiteral("/zorbo_komprimiert.tmp");
    if (QFileInfo(copy).isFile())
        QFile::remove(copy);
}

} // namespace

std::unique_ptr<World> openworld(const QString &programFolder, const Progress &progress)
{
    std::unique_ptr<World> world(new World);
    world->m_settings = loadsettings(programFolder, &world->m_settingsMessage);
    if (!world->m_settingsMessage.isEmpty())
        world->m_messages << world->m_settingsMessage;
    world->m_missingPictures = unpackdefaults(world->m_settings);
    world->m_messages << world->m_missingPictures;
    removeleftovers(world->m_settings.programFolder);
    OpenedDb opened = opendb(world->m_settings.dbpfad());
    world->m_dbState = opened.state;
    world->m_db = std::move(opened.db);
    world->m_databaseMessage = opened.message;
    if (world->m_db) {
        // Making the market is part of bringing the world up, no step of the user's.
        world->m_recordsteps = false;
        const Result market = world->run(
            [&](Database &db) {
                world->m_marketCreated = ensuretransfermarket(db, progress);
                return Result::success();
            },
            QStringLiteral("Der Transfermarkt lässt sich nicht anlegen"));
        world->m_recordsteps = true;
        if (!market) {
            world->m_marketCreated = false;
            const QString text = market.cancelled ? QStringLiteral("Der Transfermarkt wurde nicht angelegt. ") + market.message
                                                  : market.message;
            world->m_databaseMessage += (world->m_databaseMessage.isEmpty() ? QString() : QStringLiteral("\n")) + text;
        }
    }
    // A compaction keeps the old file under this name only while it puts the
    // new one in place; one lying here is left by a failure, and only the
    // user may decide about it.
    const QString backup = world->m_settings.programFolder + QStringLiteral("/zorbo_backup.mdb");
    if (QFileInfo::exists(backup))
        world->m_databaseMessage += (world->m_databaseMessage.isEmpty() ? QString() : QStringLiteral("\n"))
                                    + QStringLiteral("Neben der Datenbank liegt noch %1 von einer abgebrochenen "
                                                     "Komprimierung. Sie wird nicht überschrieben; bitte prüfen und "
                                                     "selbst entfernen.")
                                          .arg(QDir::toNativeSeparators(backup));
    if (!world->m_databaseMessage.isEmpty())
        world->m_messages << world->m_databaseMessage;
    return world;
}

} // namespace zorbo
