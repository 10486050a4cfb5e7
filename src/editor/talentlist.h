#pragma once

#include "platform/database.h"

#include <QList>
#include <QString>
#include <array>

namespace zorbo {

constexpr int TalentCount = 53;

// One row of e_attribute. Talent numbers count from 0; -1 marks an empty
// prerequisite or protection slot.
struct Talent {
    QString name;
    QString beschreibung;
    std::array<int, 3> voraus{-1, -1, -1};
    std::array<int, 3> schutz{-1, -1, -1};
};

// e_attribute in the order of id. The table counts talents from 1 and uses 0
// for "none"; both are shifted here.
QList<Talent> readtalents(Database &db);

// Which players see a talent: 0 to 39 field players, 40 to 46 all, 47 to 52
// goalkeepers (art 0).
bool talentshown(int talent, int art);

// The file of a talent's picture in the attribute folder: attribute_hell_07.gif.
QString talentpicture(const QString &folder, int talent);

} // namespace zorbo
