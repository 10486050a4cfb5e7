#pragma once

#include "platform/database.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace zorbo {

// Pictures of the tree's nodes.
enum TreePicture { ContinentPicture = 4, CountryPicture = 5, ClubPicture = 6 };

struct TreeNode {
    QString key;    // "L-1" root, continent name, "L<n>" country, "T<n>" club
    QString text;
    int picture = 0;
    QString parent; // empty for top-level nodes
};

struct ClubEntry {
    QString text; // NAME + " (" + the country's NATION + ")"
    qint64 number = 0;
};

// What the tree and every country and club list show, in the tree's order:
// countries by name, within a country clubs by name.
struct TeamTree {
    QList<TreeNode> nodes;
    QStringList laender;        // cboland: each country's NAME, then NATION if different
    QStringList spielerlaender; // cbospielerland: "TRANSFERMARKT", then as laender
    QList<ClubEntry> vereine;   // cboverein
    bool marketCreated = false; // the market row was missing and has been made
};

// The data step of the tree's rebuild; with no database, the root and the
// twelve continents. Creates the transfer market when it is missing. Throws
// DbError when the database can't be read (its text is German).
TeamTree load_dbteam(Database *db);

// Key of the root node.
inline constexpr const char *rootKey = "L-1";

} // namespace zorbo
