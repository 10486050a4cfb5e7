#include "core/teamtree.h"

#include "core/market.h"
#include "core/schema.h"
#include "platform/names.h"

#include <QHash>
#include <QSet>

namespace zorbo {

TeamTree load_dbteam(Database *db)
{
    TeamTree tree;
    tree.nodes.append({QString::fromLatin1(rootKey), QStringLiteral("Zorbo"), CountryPicture, {}});
    tree.spielerlaender << QString::fromLatin1(marketName);

    if (db) {
        tree.marketCreated = ensuretransfermarket(*db);
        Statement market = db->prepare(QStringLiteral("SELECT NUMMER, NAME FROM vereine WHERE NUMMER = 0"));
        while (market.step())
            tree.nodes.append({QStringLiteral("T") + QString::number(market.integer(0)), market.text(1), ClubPicture,
                               QString::fromLatin1(rootKey)});
    }

    QSet<QString> continents;
    for (const QString &k : kontinente()) {
        tree.nodes.append({k, k, ContinentPicture, {}});
        continents.insert(k);
    }
    if (!db)
        return tree;

    // Every club once, by its country's name folded as samename() folds it;
    // asking the table again for each country cost a walk over all clubs.
    struct Club {
        qint64 number;
        QString name;
    };
    QHash<QString, QList<Club>> clubsof;
    Statement clubs = db->prepare(QStringLiteral("SELECT NUMMER, NAME, NATION FROM vereine WHERE NATION IS NOT NULL "
                                                 "ORDER BY NAME COLLATE deutsch, NUMMER"));
    while (clubs.step())
        clubsof[foldname(clubs.text(2))].append({clubs.integer(0), clubs.text(1)});

    Statement countries = db->prepare(QStringLiteral(
        "SELECT DISTINCT NUMMER, NAME, KONTINENT, NATION FROM vereine_national ORDER BY NAME COLLATE deutsch, NUMMER"));
    while (countries.step()) {
        const QString key = QStringLiteral("L") + QString::number(countries.integer(0));
        const QString name = countries.text(1);
        const QString continent = countries.text(2);
        const QString nation = countries.text(3);
        // A country under no known continent gets no node, and its clubs
        // none either; its names still go into the lists.
        const bool placed = continents.contains(continent);
        if (placed)
            tree.nodes.append({key, name, CountryPicture, continent});
        tree.laender << name;
        tree.spielerlaender << name;
        if (name != nation) {
            tree.laender << nation;
            tree.spielerlaender << nation;
        }
        for (const Club &club : clubsof.value(foldname(name))) {
            if (placed)
                tree.nodes.append({QStringLiteral("T") + QString::number(club.number), club.name, ClubPicture, key});
            tree.vereine.append({club.name + QStringLiteral(" (") + nation + QLatin1Char(')'), club.number});
        }
    }
    return tree;
}

} // namespace zorbo
