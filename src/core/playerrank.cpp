#include "core/playerrank.h"

#include "core/search.h"
#include "platform/germanorder.h"

#include <QElapsedTimer>
#include <QHash>
#include <algorithm>
#include <optional>

namespace zorbo {

namespace {

// The distance between neighbours when the table is built: sixteen
// players fit between any two before it is built anew.
constexpr qint64 spacing = 1 << 16;
// More players to place than this, and building all anew is quicker.
constexpr int rowsForRebuild = 2000;
// More players told changed than this, and comparing all names at once is
// quicker than looking at each (a bulk edit of 10,000 tells 10,000).
constexpr int rowsForCheck = 30000;

// A player's place as the order compares it; Null names come first, as
// SQLite sorts them.
struct Key {
    QVariant name, vorname;
    qint64 frei = 0, nummer = 0;
};

int comparetext(const QVariant &a, const QVariant &b)
{
    if (a.isNull() || b.isNull())
        return int(b.isNull()) - int(a.isNull());
    return germancompare(a.toString(), b.toString());
}

int comparekeys(const Key &a, const Key &b)
{
    if (const int c = comparetext(a.name, b.name))
        return c;
    if (const int c = comparetext(a.vorname, b.vorname))
        return c;
    if (a.frei != b.frei)
        return a.frei < b.frei ? -1 : 1;
    return a.nummer < b.nummer ? -1 : a.nummer > b.nummer ? 1 : 0;
}

int comparesorted(const QVariant &a, const std::optional<QCollatorSortKey> &ka, const QVariant &b,
                  const std::optional<QCollatorSortKey> &kb)
{
    if (!ka || !kb)
        return int(bool(ka)) - int(bool(kb));
    if (const int c = ka->compare(*kb))
        return c;
    return a.toString().compare(b.toString(), Qt::CaseSensitive);
}

const char *const players =
    "SELECT 0 AS frei, NUMMER AS nummer, NAME AS name, VORNAME AS vorname FROM spieler "
    "UNION ALL SELECT 1, id, name, vorname FROM a4spieler";
// Each player's row by his number, with the names it was placed under, so
// that looking for the players placed under other names reads the index alone.
const char *const byPlayer = "CREATE INDEX IF NOT EXISTS temp.suche_rang_spieler ON suche_rang (frei, nummer, name, vorname)";
// The text a filter looks through, as the search folds it.
const char *const folded = "suchtext(coalesce(vorname, '') || ' ' || coalesce(name, ''))";

} // namespace

// A name with its collator's key, for building the whole order at once.
struct PlayerRank::Sorted {
    QVariant name, vorname;
    std::optional<QCollatorSortKey> nameKey, vornameKey;
    qint64 frei = 0, nummer = 0;
    size_t read = 0; // the how-manieth read, in the order of frei and nummer
};

namespace {

bool before(const PlayerRank::Sorted &a, const PlayerRank::Sorted &b)
{
    if (const int c = comparesorted(a.name, a.nameKey, b.name, b.nameKey))
        return c < 0;
    if (const int c = comparesorted(a.vorname, a.vornameKey, b.vorname, b.vornameKey))
        return c < 0;
    return std::pair(a.frei, a.nummer) < std::pair(b.frei, b.nummer);
}

// Rows read, sorted and written a piece at a time.
constexpr int rowsPerRead = 4000;
constexpr int rowsPerWrite = 4000;

} // namespace

PlayerRank::~PlayerRank() = default;

PlayerRank::PlayerRank(Database &db) : m_db(db)
{
    m_db.exec(QStringLiteral(
        "CREATE TEMP TABLE IF NOT EXISTS suche_rang (rang INTEGER PRIMARY KEY, frei INTEGER NOT NULL, nummer INTEGER NOT NULL, "
        "name TEXT, vorname TEXT, text TEXT);") + QString::fromLatin1(byPlayer));
}

void PlayerRank::update(const Change &change)
{
    if (!m_built) {
        // Rows already read may have changed: all are compared once it is built.
        if (m_stage != Stage::Read || m_readFrei || m_readAfter >= 0)
            m_check = true;
        return;
    }
    if (change.everything || change.tables.contains(QStringLiteral("a4spieler")) || m_told.size() + change.players.size() > rowsForCheck)
        m_check = true;
    else if (change.tables.contains(QStringLiteral("spieler")))
        m_told.unite(change.players);
}

// The whole order, sorted here on the collator's keys: made once per
// name, they spare the collator the million comparisons of a sort in the
// database.
void PlayerRank::build()
{
    m_stage = Stage::Read;
    m_all.clear();
    m_runs.clear();
    m_readFrei = 0;
    m_readAfter = -1;
    m_built = false;
    while (!buildstep(-1)) {
    }
}

// Reads the next rows by player number, spieler first, then a4spieler,
// and sorts them as a run of their own; false when all are read.
bool PlayerRank::readpiece(int rows)
{
    // First names repeat: each one's key is made once a piece.
    QHash<QString, QCollatorSortKey> firstNames;
    Statement st = m_db.prepare(m_readFrei ? QStringLiteral("SELECT id, name, vorname FROM a4spieler WHERE id > ?1 ORDER BY id LIMIT ?2")
                                           : QStringLiteral("SELECT NUMMER, NAME, VORNAME FROM spieler WHERE NUMMER > ?1 ORDER BY NUMMER LIMIT ?2"));
    st.bindAll(m_readAfter, rows);
    const size_t from = m_all.size();
    while (st.step()) {
        Sorted s{st.value(1), st.value(2), {}, {}, m_readFrei, st.integer(0), m_all.size()};
        if (!s.name.isNull())
            s.nameKey = germansortkey(s.name.toString());
        if (!s.vorname.isNull()) {
            const QString vorname = s.vorname.toString();
            auto known = firstNames.constFind(vorname);
            if (known == firstNames.constEnd())
                known = firstNames.insert(vorname, germansortkey(vorname));
            s.vornameKey = *known;
        }
        m_readAfter = s.nummer;
        m_all.push_back(std::move(s));
    }
    if (m_all.size() > from) {
        std::sort(m_all.begin() + qsizetype(from), m_all.end(), before);
        m_runs.push_back(m_all.size());
    }
    if (m_all.size() - from < size_t(rows)) {
        if (m_readFrei)
            return false;
        m_readFrei = 1;
        m_readAfter = -1;
    }
    return true;
}

bool PlayerRank::buildstep(int ms)
{
    if (m_built)
        return true;
    QElapsedTimer clock;
    clock.start();
    Transaction tx(m_db);
    do {
        switch (m_stage) {
        case Stage::Read:
            if (!readpiece(rowsPerRead))
                m_stage = Stage::Merge;
            break;
        case Stage::Merge:
            // Two neighbouring runs become one, the shortest first.
            if (m_runs.size() > 1) {
                size_t best = 0, length = SIZE_MAX;
                for (size_t r = 0; r + 1 < m_runs.size(); ++r) {
                    const size_t start = r ? m_runs[r - 1] : 0;
                    if (m_runs[r + 1] - start < length) {
                        length = m_runs[r + 1] - start;
                        best = r;
                    }
                }
                const size_t start = best ? m_runs[best - 1] : 0;
                std::inplace_merge(m_all.begin() + qsizetype(start), m_all.begin() + qsizetype(m_runs[best]),
                                   m_all.begin() + qsizetype(m_runs[best + 1]), before);
                m_runs.erase(m_runs.begin() + qsizetype(best));
            } else {
                // The rows are written in the order they were read, of
                // their numbers: so the index by player grows at its end,
                // which is as quick as making it after them, and goes with
                // them piece by piece.
                m_byRead.resize(m_all.size());
                for (size_t i = 0; i < m_all.size(); ++i)
                    m_byRead[m_all[i].read] = i;
                m_db.exec(QStringLiteral("DELETE FROM temp.suche_rang"));
                m_written = 0;
                m_stage = Stage::Write;
            }
            break;
        case Stage::Write: {
            Statement put = m_db.prepare(
                QStringLiteral("INSERT INTO temp.suche_rang (rang, frei, nummer, name, vorname, text) VALUES (?1, ?2, ?3, ?4, ?5, ?6)"));
            const size_t end = std::min(m_all.size(), m_written + rowsPerWrite);
            for (; m_written < end; ++m_written) {
                const size_t place = m_byRead[m_written];
                Sorted &s = m_all[place];
                put.bindAll(qint64(place + 1) * spacing, s.frei, s.nummer, s.name, s.vorname,
                            searchfold(s.vorname.toString() + QLatin1Char(' ') + s.name.toString()))
                    .exec();
                s = {}; // freed a piece at a time, not all at the end
            }
            if (m_written == m_all.size()) {
                m_all = {};
                m_runs = {};
                m_byRead = {};
                m_built = true;
            }
            break;
        }
        }
    } while (!m_built && (ms < 0 || clock.elapsed() < ms));
    tx.commit();
    return m_built;
}

void PlayerRank::ensure()
{
    if (!m_built)
        while (!buildstep(-1)) {
        }
    if (!m_check && m_told.isEmpty())
        return;
    Transaction tx(m_db);
    // The players whose row is missing, left over or placed under another name.
    QList<QPair<int, qint64>> moved;
    if (m_check) {
        Statement st = m_db.prepare(QStringLiteral(
            "SELECT p.frei, p.nummer FROM (%1) p LEFT JOIN temp.suche_rang r ON r.frei = p.frei AND r.nummer = p.nummer "
            "WHERE r.nummer IS NULL OR p.name IS NOT r.name COLLATE BINARY OR p.vorname IS NOT r.vorname COLLATE BINARY "
            "UNION ALL SELECT frei, nummer FROM temp.suche_rang r WHERE NOT EXISTS "
            "(SELECT 1 FROM spieler WHERE r.frei = 0 AND NUMMER = r.nummer UNION ALL SELECT 1 FROM a4spieler WHERE r.frei = 1 AND id = r.nummer)")
                                        .arg(QLatin1String(players)));
        while (st.step() && moved.size() <= rowsForRebuild)
            moved.append({int(st.integer(0)), st.integer(1)});
    } else {
        // The numbers told go in as one JSON array: one statement, not one a player.
        QByteArray told = "[";
        for (qint64 n : std::as_const(m_told))
            told += QByteArray::number(n) + ',';
        told.back() = ']';
        Statement st = m_db.prepare(QStringLiteral(
            "SELECT x.value FROM json_each(?1) x LEFT JOIN spieler s ON s.NUMMER = x.value "
            "LEFT JOIN temp.suche_rang r ON r.frei = 0 AND r.nummer = x.value "
            "WHERE (s.NUMMER IS NULL) <> (r.nummer IS NULL) OR s.NAME IS NOT r.name COLLATE BINARY "
            "OR s.VORNAME IS NOT r.vorname COLLATE BINARY"));
        st.bind(1, QString::fromLatin1(told));
        while (st.step() && moved.size() <= rowsForRebuild)
            moved.append({0, st.integer(0)});
    }
    m_check = false;
    m_told.clear();
    if (moved.size() > rowsForRebuild) {
        build();
        tx.commit();
        return;
    }
    Statement drop = m_db.prepare(QStringLiteral("DELETE FROM temp.suche_rang WHERE frei = ?1 AND nummer = ?2"));
    for (const auto &m : std::as_const(moved))
        drop.bindAll(m.first, m.second).exec();
    for (const auto &m : std::as_const(moved)) {
        if (!place(m.first, m.second)) {
            build();
            break;
        }
    }
    tx.commit();
}

// Puts one player between his neighbours in the order, by halving the
// range of places; false when they stand too close for him.
bool PlayerRank::place(int frei, qint64 nummer)
{
    Statement cur = m_db.prepare(frei ? QStringLiteral("SELECT name, vorname FROM a4spieler WHERE id = ?1")
                                      : QStringLiteral("SELECT NAME, VORNAME FROM spieler WHERE NUMMER = ?1"));
    cur.bind(1, nummer);
    if (!cur.step())
        return true;
    const Key key{cur.value(0), cur.value(1), frei, nummer};

    Statement ends = m_db.prepare(QStringLiteral("SELECT min(rang), max(rang) FROM temp.suche_rang"));
    ends.step();
    qint64 rang = 0;
    if (!ends.isNull(0)) {
        // Every row at or below lo comes before the player, every row at
        // or above hi after him.
        qint64 lo = ends.integer(0) - 1, hi = ends.integer(1) + 1;
        Statement probe = m_db.prepare(QStringLiteral(
            "SELECT rang, name, vorname, frei, nummer FROM temp.suche_rang WHERE rang >= ?1 AND rang < ?2 ORDER BY rang LIMIT 1"));
        while (hi - lo > 1) {
            const qint64 mid = lo + (hi - lo) / 2;
            probe.bindAll(mid, hi);
            if (probe.step() && comparekeys({probe.value(1), probe.value(2), probe.integer(3), probe.integer(4)}, key) < 0)
                lo = probe.integer(0);
            else
                hi = mid;
            probe.reset();
        }
        const QVariant before = m_db.scalar(QStringLiteral("SELECT max(rang) FROM temp.suche_rang WHERE rang <= ?1"), lo);
        const QVariant after = m_db.scalar(QStringLiteral("SELECT min(rang) FROM temp.suche_rang WHERE rang >= ?1"), hi);
        if (before.isNull())
            rang = after.toLongLong() - spacing;
        else if (after.isNull())
            rang = before.toLongLong() + spacing;
        else if (after.toLongLong() - before.toLongLong() < 2)
            return false;
        else
            rang = before.toLongLong() + (after.toLongLong() - before.toLongLong()) / 2;
    }
    m_db.run(QStringLiteral("INSERT INTO temp.suche_rang (frei, nummer, name, vorname, text, rang) "
                            "SELECT ?1, ?2, ?3, ?4, %1, ?5 FROM (SELECT ?3 AS name, ?4 AS vorname)")
                 .arg(QLatin1String(folded)),
             frei, nummer, key.name, key.vorname, rang);
    return true;
}

} // namespace zorbo
