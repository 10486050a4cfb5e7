#pragma once

#include "core/world.h"

#include <QSet>
#include <vector>

namespace zorbo {

// Every player's place in German order, as an integer, so that a list of
// tens of thousands of hits sorts integers instead of asking the collator
// a million times. temp.suche_rang holds a row for each player of spieler
// (frei 0, by NUMMER) and of a4spieler (frei 1, by id): his name and first
// name as they were placed, "Vorname Name" folded as the search folds it
// (suchtext), and rang, rising in the order of
// "name COLLATE deutsch, vorname COLLATE deutsch, frei, nummer". The places
// are spread apart, so a renamed or new player slips in between his
// neighbours without moving anyone else.
class PlayerRank {
public:
    explicit PlayerRank(Database &db);
    ~PlayerRank();

    // Notes what a committed run changed; the work waits for ensure().
    void update(const Change &change);
    // Brings the table up to date: all of it the first time and after
    // large changes, else the players whose names changed.
    void ensure();
    // Does a piece of the first build, about ms long, each piece in its own
    // transaction; true when the table is built. ensure() finishes what is
    // left. Names changed while it is under way are looked at once it is done.
    bool buildstep(int ms);
    bool built() const { return m_built; }

    struct Sorted;

private:
    void build();
    bool place(int frei, qint64 nummer);
    bool readpiece(int rows);

    enum class Stage { Read, Merge, Write };

    Database &m_db;
    bool m_built = false;
    bool m_check = false;   // rows changed that were not told one by one
    QSet<qint64> m_told;    // NUMMER of spieler rows changed since
    // The build under way: its stage, the rows read so far, sorted in runs
    // (each run's end in m_runs), and where reading and writing stand.
    Stage m_stage = Stage::Read;
    std::vector<Sorted> m_all;
    std::vector<size_t> m_runs;
    std::vector<size_t> m_byRead; // each row's place in m_all, in the order read
    int m_readFrei = 0;
    qint64 m_readAfter = -1;
    size_t m_written = 0;
};

} // namespace zorbo
