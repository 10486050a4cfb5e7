// The checks of the squads, as vereinspieler holds them: one walk over its
// rows with each row's player, the rest counted here.
#include "core/problemsink.h"

#include <algorithm>
#include <limits>
#include <map>

namespace zorbo::detail {

namespace {

constexpr qint64 noNumber = std::numeric_limits<qint64>::min(); // a squad number that is Null

struct Squad {
    int size = 0;        // rows, also those naming no player
    bool keeper = false;
    std::map<qint64, QList<qint64>> numbers; // squad number -> players wearing it
};

QString joined(const QList<qint64> &numbers)
{
    QStringList texts;
    for (qint64 n : numbers)
        texts << QString::number(n);
    return texts.join(QStringLiteral(", "));
}

} // namespace

void checksquads(Database &db, ProblemSink &sink)
{
    std::map<qint64, Squad> squads;
    std::map<std::pair<qint64, qint64>, bool> missing; // (team, player) of rows naming no player
    QHash<qint64, qint64> firstTeam;
    std::map<qint64, QList<qint64>> twice; // player -> his teams, for those in more than one
    Statement rows = db.prepare(QStringLiteral(
        "SELECT v.verein, v.spieler, s.NUMMER IS NOT NULL, s.RUECKENNUMMER, s.ART FROM kaderzeilen v "
        "LEFT JOIN spieler s ON s.NUMMER = v.spieler ORDER BY v.rowid"));
    while (rows.step()) {
        const qint64 team = rows.integer(0), player = rows.integer(1);
        const bool exists = rows.integer(2) != 0;
        // A national team calls up players of the clubs; only two clubs
        // (the market counting as one) are one too many.
        if (sink.countries.contains(team)) {
        } else if (const auto first = firstTeam.constFind(player); first != firstTeam.constEnd()) {
            QList<qint64> &teams = twice[player];
            if (teams.isEmpty())
                teams << *first;
            teams << team;
        } else {
            firstTeam.insert(player, team);
        }
        if (!exists)
            missing[{team, player}] = true;
        if (team == 0) // the market's squad is no team's
            continue;
        Squad &squad = squads[team];
        ++squad.size;
        if (!exists)
            continue;
        squad.keeper = squad.keeper || (!rows.isNull(4) && rows.integer(4) == 0);
        if (team > 0)
            squad.numbers[rows.isNull(3) ? noNumber : rows.integer(3)] << player;
    }

    for (const auto &[team, squad] : squads) {
        for (const auto &[number, players] : squad.numbers) {
            if (players.size() > 1)
                sink.team(ProblemKind::RepeatedSquadNumber, team, sink.countries.contains(team), QStringLiteral("RUECKENNUMMER"),
                          QStringLiteral("die Rückennummer %1 tragen die Spieler %2")
                              .arg(number == noNumber ? QStringLiteral("(leer)") : QString::number(number), joined(players)));
        }
    }
    for (const auto &[row, unused] : missing)
        sink.team(ProblemKind::SquadRowWithoutPlayer, row.first, sink.countries.contains(row.first), {},
                  QStringLiteral("der Kader nennt den Spieler %1, den es nicht gibt").arg(row.second));
    for (const auto &[player, teams] : twice)
        sink.player(ProblemKind::PlayerInTwoClubs, player, {}, QStringLiteral("steht in mehreren Kadern: Teams %1").arg(joined(teams)));

    // Club squads, not the market's; a national team may be left without one.
    for (auto club = sink.clubs.constBegin(); club != sink.clubs.constEnd(); ++club) {
        const auto squad = squads.find(club.key());
        const int size = squad == squads.end() ? 0 : squad->second.size;
        if (size != 20)
            sink.team(ProblemKind::SquadSize, club.key(), false, {},
                      QStringLiteral("Verein „%1“ hat %2 Spieler statt 20").arg(club.value()).arg(size));
    }
    for (const auto &[team, squad] : squads) {
        if (!squad.keeper)
            sink.team(ProblemKind::NoGoalkeeper, team, sink.countries.contains(team), {}, QStringLiteral("der Kader hat keinen Torwart"));
    }

    // The walk over the players noted every number; the names only of those
    // in no squad are read.
    std::sort(sink.players.begin(), sink.players.end());
    Statement name = db.prepare(QStringLiteral("SELECT VORNAME, NAME FROM spieler WHERE NUMMER = ?1"));
    for (qint64 player : sink.players) {
        if (firstTeam.contains(player))
            continue;
        name.bind(1, player);
        if (name.step())
            sink.player(ProblemKind::PlayerInNoClub, player, {},
                        QStringLiteral("„%1 %2“ steht in keinem Kader").arg(name.text(0), name.text(1)));
        name.reset();
    }
}

} // namespace zorbo::detail
