#pragma once

#include "platform/database.h"

#include <QString>

namespace zorbo {

// Makes sure a country has its row in vereine_national and returns the name
// under which it stands there. Only a name equal to L, case included, counts
// as found; anything else gets a new row with the defaults of a new country
// and the continent from e_landkontinent ("Atlantis" when unknown). SPIELER,
// NATIONALTEAM and LANDNAME get empty text, so that the country goes out to
// 1_tm.cfg as a whole national record and reads back. A blank name
// (blankname) makes no country and gives empty text. Throws DbError.
QString landneu(Database &db, const QString &land, bool *created = nullptr);

} // namespace zorbo
