// Lists of names sort as a German reader expects, in code and in statements.
#include "core/teamtree.h"
#include "platform/germanorder.h"
#include "support/testsupport.h"

#include <QCollator>
#include <QLocale>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::keysUnder;
using zorbo::test::NewWorld;

namespace {

QStringList sortedInSql(Database &db, const QStringList &names)
{
    db.exec("CREATE TEMP TABLE namen (name TEXT)");
    for (const QString &n : names)
        db.run("INSERT INTO namen VALUES (?1)", n);
    QStringList out;
    Statement st = db.prepare("SELECT name FROM namen ORDER BY name COLLATE deutsch");
    while (st.step())
        out << st.text(0);
    db.exec("DROP TABLE namen");
    return out;
}

} // namespace

TEST(GermanOrder, NamesSortAsAGermanReaderExpects)
{
    const QStringList expected = {"Armel", "Ärmel", "Ärmelkanal", "Deutschland", "muller", "Müller", "Mullerova",
                                  "Niederlande", "Österreich", "Polen", "Straße", "Strasser", "zypern", "Zypern"};
    QStringList shuffled = expected;
    std::reverse(shuffled.begin(), shuffled.end());
    std::swap(shuffled[2], shuffled[9]);

    NewWorld w;
    const QStringList inSql = sortedInSql(w.db(), shuffled);
    QStringList inCode = shuffled;
    std::sort(inCode.begin(), inCode.end(), [](const QString &a, const QString &b) { return germancompare(a, b) < 0; });

    EXPECT_EQ(inSql, inCode) << "one rule in code and in statements";
    const auto at = [&](const char *n) { return inSql.indexOf(QString::fromUtf8(n)); };
    EXPECT_EQ(at("Österreich"), at("Niederlande") + 1);
    EXPECT_EQ(at("Polen"), at("Österreich") + 1);
    EXPECT_EQ(std::abs(at("Ärmel") - at("Armel")), 1);
    EXPECT_EQ(std::abs(at("Zypern") - at("zypern")), 1) << "case doesn't split";
    EXPECT_EQ(std::abs(at("Müller") - at("muller")), 1);
    EXPECT_LT(at("Straße"), at("Strasser")) << "ß as ss";
    EXPECT_EQ(inSql.size(), expected.size());
    // Equal by the rule, different in text: still one fixed order both ways.
    EXPECT_NE(germancompare(u"Zypern", u"zypern"), 0);
    EXPECT_EQ(germancompare(u"Zypern", u"zypern") < 0, germancompare(u"zypern", u"Zypern") > 0);
}

TEST(GermanOrder, TreeListsCountriesAndClubsInGermanOrder)
{
    NewWorld w;
    int nr = 1;
    for (const char *land : {"Zypern", "Österreich", "Polen", "Niederlande", "ägypten"})
        w.db().run("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES (?1, ?2, ?2, 'West-Europa')",
                   nr++, QString::fromUtf8(land));
    for (const char *club : {"Zürich", "Austria Wien", "Ä-Klub", "admira"})
        w.db().run("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (?1, ?2, 'Österreich')", nr++,
                   QString::fromUtf8(club));

    const TeamTree tree = load_dbteam(&w.db());
    const QStringList laender = tree.laender;
    EXPECT_EQ(laender, (QStringList{"ägypten", "Niederlande", "Österreich", "Polen", "Zypern"}));
    QStringList clubs;
    for (const QString &key : keysUnder(tree, "L2"))
        clubs << tree.nodes[std::find_if(tree.nodes.begin(), tree.nodes.end(),
                                         [&](const TreeNode &n) { return n.key == key; }) - tree.nodes.begin()]
                     .text;
    EXPECT_EQ(clubs, (QStringList{"Ä-Klub", "admira", "Austria Wien", "Zürich"}));
}

TEST(GermanOrder, TheQuickWayByFirstLettersAgreesWithTheCollator)
{
    QCollator collator{QLocale(QLocale::German, QLocale::Germany)};
    collator.setCaseSensitivity(Qt::CaseSensitive);
    const QStringList names = {"Müller", "muller", "Zander", "Özil", "Ärger", "Abel", "abel", "Bär", "bar", "Šimek", "Smith",
                               "1. FC", "'s-Hertogenbosch", "Łódź", "Lodz", "van Dijk", "Van Basten", "Yilmaz", "Æsir", "Zé",
                               "", " Leer", "Straße", "Strasse", "ßa", "Øberg", "Oberg", "Ñandú", "Nunez", "de Jong"};
    for (const QString &a : names) {
        for (const QString &b : names) {
            int expected = collator.compare(a, b);
            if (expected == 0)
                expected = a.compare(b, Qt::CaseSensitive);
            const int got = germancompare(a, b);
            EXPECT_EQ(got < 0, expected < 0) << a.toStdString() << " / " << b.toStdString();
            EXPECT_EQ(got > 0, expected > 0) << a.toStdString() << " / " << b.toStdString();
        }
    }
}
