#pragma once

#include "core/world.h"
#include "anstoss/aetfile.h"
#include "anstoss/anstossresult.h"
#include "anstoss/squadbuilder.h"

#include <QVariant>
#include <array>

namespace zorbo {

// The new squad onto the club's player rows: the i-th entry onto the i-th
// lowest player number of the club's slots. Every value is gathered before
// the first row is written, so that a club's own player is read as he stood
// before the save. A file's player gets strength, maximum strength
// (staerkegewinn), height, games left and face drawn in that order, his
// country through landneu and no talents; a club's player takes his whole
// row along: the copy the entry carries, taken when the list was filled, so
// that a second save of the same squad writes the same players again. One transaction: a refused entry saves nothing. Refuses a
// squad of other than 20 entries and a club with fewer than 20 slots.
// The workbench's player save as a step of the history, with a restore
// point before it: it replaces a whole squad.
Step importplayersstep(qint64 club, const QString &path);

AnstossResult saveimportplayers(Database &db, const AetFile &file, qint64 club, const QList<SquadEntry> &squad,
                                const Progress &progress = {});

// What the page "Land/Verein" of the workbench shows and which groups of it
// are written.
struct TeamImport {
    bool team = false;    // Name, Stadt, Nation
    bool stadium = false; // Stadion_Name, Stadion_Sitzpl, Stadion_Stehpl
    bool kits = false;    // the exporter's kit colours
    QString name, stadt, land;
    QString stadion, sitz, steh;
    // The drawings on show: home, away, goalkeeper; always written.
    std::array<QVariant, 3> kitart;
};

// A club's row as the workbench shows it beside the file.
struct ClubShown {
    bool found = false;
    qint64 nummer = 0;
    QString grafiknr, name, kurzname, stadt, nation, stadion, sitz, steh;
    std::array<QVariant, 3> kitart;     // home, away, goalkeeper
    std::array<QString, 12> colours;    // four colour texts a kit, in the same order
};
ClubShown readclubshown(Database &db, qint64 club);

// Values of the page at its first fill from the file (a missing key leaves
// its field empty) and the club's kit drawings.
TeamImport teamfromfile(Database &db, const AetFile &file, qint64 club);

// Saves the ticked groups onto the club's row of vereine, then the kit
// drawings, the colours of the kit set's colour table for them and, with
// kits ticked, the exporter's colours of home and away kit (black for a
// missing key, as the file spells them). One transaction; refuses a club
// that isn't there, team data that break checkteamrow (an empty name or
// country), seats that aren't whole numbers, a colour text that isn't
// three numbers, and a save with no group ticked.
// The workbench's club save as a step of the history.
Step importteamstep(qint64 club, const QString &path);

AnstossResult saveimportteam(Database &db, const AetFile &file, qint64 club, const TeamImport &team, int trikotsatz);

} // namespace zorbo
