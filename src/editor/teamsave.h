#pragma once

#include "core/kitcolours.h"
#include "platform/database.h"
#include "platform/operation.h"

#include <QString>
#include <array>
#include <optional>

namespace zorbo {

// What the team tab shows. Numbers the user types stay text until the save
// checks them, so that a refused save can name the field.
struct TeamForm {
    qint64 nummer = 0;
    TeamTable table = TeamTable::Vereine;
    QString name;      // txtteamlang
    QString kurzname;  // txtteamkurz
    QString grafiknr;  // txtgrafnr
    QString stadion;   // txtstadion
    QString stadt;     // txtstadt
    QString land;      // cboland: a club's country
    QString kontinent; // cbokontinent: a national team's continent
    QString sitz;      // txtsitz
    QString steh;      // txtsteh
    std::array<int, 3> arts{0, 0, 0}; // kit arts by slot: home, away, keeper

    bool operator==(const TeamForm &) const = default;
};

// Team modes of the editor: 0 national team, 1 club, 2 transfer market.
enum TeamMode { NationalMode = 0, ClubMode = 1, MarketMode = 2 };

// Reads a stored team for the team tab; nothing when the row is missing.
// The market mode reads only number, name and crest. Null columns read as
// empty text, number columns as 0.
std::optional<TeamForm> readteam(Database &db, qint64 nummer, TeamMode mode);

// The form of a country or club that exists only in the tree so far.
TeamForm newcountryform(qint64 nummer, const QString &kontinent);
TeamForm newclubform(qint64 nummer, const QString &land);

// Stores the form in one transaction. isNew: the row is created first, with
// every column the game's files hold, and a new club gets its 20 placeholder
// players. oldName: the name the team had before; a renamed national team
// carries its new name into its NATION, spieler.NATION and vereine.NATION.
// A kit whose drawing changed (every kit of a new team) takes its colours
// from the colour table of the kit set. What the form leaves as it was stays
// as stored. Refuses, writing nothing, a row that breaks checkteamrow or a
// number field that holds no whole number.
Result teamsave(Database &db, const TeamForm &form, bool isNew, const QString &oldName, int trikotsatz);

} // namespace zorbo
