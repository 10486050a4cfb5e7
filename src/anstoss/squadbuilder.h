#pragma once

#include "anstoss/aetfile.h"

#include <QChar>
#include <QList>
#include <QString>
#include <QVariantList>
#include <array>

namespace zorbo {

// One entry of the workbench's player lists.
struct ListEntry {
    QString key;      // "I_" + file index, "E_" + player number; in the new squad prefix + place
    QString text;     // "V. Name" of the file, "Vorname Name" of the club
    QString position; // "TOR" … "STU"
    QString staerke;  // "2,5 Sterne"
    int art = 0;
    qint64 id = 0;    // file index (from 0) or player number
    bool ghosted = false; // stands in the new squad already
    QVariantList row; // a club's player: his columns of spieler after NUMMER, as read
};

// A player of the new squad as the save takes it: the file's player (by
// index from 0) or a player of the club (by number).
struct SquadEntry {
    bool fromFile = true;
    qint64 id = 0;
    // A club's player as he was read when the list was filled; empty: read
    // him by his number.
    QVariantList row;
    bool operator==(const SquadEntry &) const = default;
};

inline constexpr int squadSize = 20;

// The systems of the automatic choice, players per position TOR, ABW, MIT, STU.
inline constexpr std::array<std::array<int, 4>, 10> squadsystems{{{2, 6, 6, 6}, {2, 6, 7, 5}, {2, 6, 5, 7}, {2, 5, 6, 7},
                                                                  {2, 5, 7, 6}, {2, 7, 5, 6}, {2, 7, 6, 5}, {2, 7, 7, 4},
                                                                  {2, 4, 7, 7}, {2, 7, 4, 7}}};

// "2 TOR, 6 ABW, 6 MIT, 6 STU" for a system.
QString systemcaption(int system);
// The random system: one of 0 to 8, drawn from the program's generator.
int randomsystem();

// The workbench's three lists without a window: the file's players, the
// club's players and the new squad of up to 20, kept sorted by position.
class SquadBuilder {
public:
    enum Source { Import, Editor };

    // Fills both source lists and empties the squad. Throws Fault for a
    // file it can't list (a missing player section, a Position outside 0-3),
    // DbError when the club's squad can't be read.
    void fill(Database &db, const AetFile &file, qint64 club);
    void clear();
    // Reads the club's list again after a change; the squad keeps its
    // players as they were read, none of the new list stands in it.
    void fillclub(Database &db, qint64 club);
    // Empties the squad; its entries can be copied again.
    void dropsquad();

    const QList<ListEntry> &list(Source source) const { return source == Import ? m_import : m_editor; }
    const QList<ListEntry> &squad() const { return m_squad; }
    bool full() const { return m_squad.size() >= squadSize; }

    // Copies the given rows of a source list, in list order, as long as the
    // squad holds fewer than 20; ghosted rows are passed over. Returns the
    // rows copied, which are ghosted now.
    QList<int> copy(Source source, QList<int> rows);
    // Removes the given rows of the squad; their source entries can be copied again.
    void remove(QList<int> rows);
    // The automatic choice by a system 0 to 9: per position the strongest by
    // their strength text, counting ghosted ones, each chosen one ghosted.
    void autochoose(int system);

    // Marks source rows as taken elsewhere (sent to the free players).
    void ghost(Source source, const QList<int> &rows);
    // The squad in its order, for the save.
    QList<SquadEntry> entries() const;
    // Row of the source entry with that id, or -1.
    int rowof(Source source, qint64 id) const;

private:
    QList<ListEntry> &sourcelist(Source source) { return source == Import ? m_import : m_editor; }

    QList<ListEntry> m_import;
    QList<ListEntry> m_editor;
    QList<ListEntry> m_squad;
};

} // namespace zorbo
