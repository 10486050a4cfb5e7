#pragma once

#include "core/problems.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <vector>

namespace zorbo::detail {

// Gathers the problems of one check; the player's club for opening him is
// filled in at the end, from the squads.
struct ProblemSink {
    QList<Problem> problems;
    QSet<qint64> countries;          // NUMMER of the rows of vereine_national
    QSet<QString> countryNames;      // their NAME, case folded as samename compares
    QMap<qint64, QString> clubs;     // NUMMER and NAME of the clubs of vereine, the market left out
    std::vector<qint64> players;     // NUMMER of every player

    void team(ProblemKind kind, qint64 team, bool country, const QString &field, const QString &text)
    {
        Problem p;
        p.kind = kind;
        p.where.team = team;
        p.where.field = field;
        p.where.text = text;
        p.country = country;
        problems.append(p);
    }
    void player(ProblemKind kind, qint64 player, const QString &field, const QString &text)
    {
        Problem p;
        p.kind = kind;
        p.where.player = player;
        p.where.field = field;
        p.where.text = text;
        problems.append(p);
    }
};

// The walks over the rows: every team row of both tables, every player;
// they go first, as the squads' check takes the teams and players they note.
void checkteamrows(Database &db, const Settings &settings, ProblemSink &sink);
void checkplayerrows(Database &db, const Settings &settings, ProblemSink &sink);
// The squads: repeated numbers, rows naming no player, players in two
// squads or none, squad sizes and goalkeepers.
void checksquads(Database &db, ProblemSink &sink);

// Values beyond what the windows show, each with its row and column.
void checkwindowranges(Database &db, ProblemSink &sink);

// Whether the text, stored as UTF-8, goes into code page 1252 as it is.
bool fitsCp1252Utf8(const unsigned char *text, int bytes);

} // namespace zorbo::detail
