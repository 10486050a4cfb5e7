#include "core/teamtree.h"

#include "core/market.h"
#include "core/schema.h"

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

    Statement countries = db->prepare(QStringLiteral(
        "SELECT DISTINCT NUMMER, NAME, KONTINENT, NATION FROM vereine_national ORDER BY NAME COLLATE deutsch, NUMMER"));
    Statement clubs = db->prepare(QStringLiteral("SELECT NUMMER, NAME FROM vereine WHERE samename(NATION, ?1) ORDER BY NAME COLLATE deutsch, NUMMER"));
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
        clubs.bind(1, name);
        while (clubs.step()) {
            const qint64 number = clubs.integer(0);
            if (placed)
                tree.nodes.append({QStringLiteral("T") + QString::number(number), clubs.text(1), ClubPicture, key});
            tree.vereine.append({clubs.text(1) + QStringLiteral(" (") + nation + QLatin1Char(')'), number});
        }
        clubs.reset();
    }
    return tree;
}

} // namespace zorbo
