#pragma once

#include "core/settings.h"
#include "platform/database.h"
#include "platform/operation.h"

#include <QList>
#include <QString>

namespace zorbo {

// What the game or the editor would stumble over, in the order the list
// shows the groups. The last five are warnings: the world can still be
// exported and read back.
enum class ProblemKind {
    LongClubName,        // a club's name over 15 characters
    RepeatedSquadNumber, // two players of one club with the same number
    NotCp1252,           // text the game's files can't hold as it is
    BadColour,           // a colour text the kit reader can't split
    KitOutsideSet,       // a kit drawing number the kit set lacks
    CrestMissing,        // a crest number without its crest file
    FaceMissing,         // a face code naming pictures that don't exist
    TalentOutside,       // a talent number outside 0 to 52
    NullColumn,          // a team row that its record could not be read back from
    NumberTooLarge,      // a team or player number outside the files' range
    PlayerInNoClub,
    SquadRowWithoutPlayer,
    PlayerInTwoClubs,
    TeamWithoutName,     // a team row whose name is blank
    ClubWithoutCountry,
    CountryWithoutContinent,
    SquadSize,           // warning: a club's squad of other than 20
    NoGoalkeeper,        // warning: a squad without a goalkeeper
    CrestDefault,        // warning: a crest number without its file, shown with the default crest
    PlayerWithoutCountry, // warning: a player whose country is blank
    OutsideWindow,       // warning: a value kept beyond what the windows show
};

bool iswarning(ProblemKind kind);
// The German heading of a kind's group, as "Vereinsnamen über 15 Zeichen".
QString problemheading(ProblemKind kind);

struct Problem {
    ProblemKind kind = ProblemKind::LongClubName;
    // Where: team (and whether it is a country) or player, the field; text
    // is the German line of the list.
    Finding where;
    bool country = false; // where.team is a row of vereine_national

    // The tree's key of the team the line opens ("T12", "L3"); for a player
    // his first club; empty when there is none.
    QString teamKey;
};

struct ProblemReport {
    Result result;
    QList<Problem> problems; // grouped by kind, in the order of ProblemKind
    int errors() const;
    int warnings() const;
};

// Looks through the whole world: the team tables, the players and the
// squads, the crest and face folders and the colour table of the settings'
// kit set. Reads only; run it through World::run for one consistent view.
// Progress counts the checks.
ProblemReport checkproblems(Database &db, const Settings &settings, const Progress &progress = {});

// The report as text, the groups with their headings and a closing count:
// what "zorbo-cli check" prints and the panel's copy holds.
QStringList problemlines(const ProblemReport &report);

} // namespace zorbo
