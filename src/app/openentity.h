#pragma once

#include <QString>

namespace zorbo {

class Shell;

// Opens what a search hit or a problem names: the team's node in the tree
// (its tab "Land/Verein"), and for a player his row of the squad (the tab
// "Spieler"), as a click on them does. teamKey "T12", "L3"; player -1 for
// none. A player in no squad can't be shown; then nothing opens.
void openentity(Shell &shell, const QString &teamKey, qint64 player);

} // namespace zorbo
