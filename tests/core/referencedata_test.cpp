#include "core/schema.h"
#include "support/testsupport.h"

#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

using namespace zorbo;

namespace {

class ReferenceData : public ::testing::Test {
protected:
    void SetUp() override
    {
        opened = opendb(folder.file(QStringLiteral("zorbo.mdb")));
        ASSERT_EQ(opened.state, DbOpenState::Created) << opened.message.toStdString();
    }
    qint64 count(const QString &sql) { return opened.db->scalar(sql).toLongLong(); }
    QStringList texts(const QString &sql)
    {
        QStringList out;
        Statement st = opened.db->prepare(sql);
        while (st.step())
            out.append(st.text(0));
        return out;
    }

    test::TempFolder folder;
    OpenedDb opened;
};

// Every reference of a talent to another, prerequisites and protection alike.
const char *const talentEdges = R"SQL(
    edge(a, b, voraus) AS (
      SELECT id, voraus1, 1 FROM e_attribute UNION ALL SELECT id, voraus2, 1 FROM e_attribute
      UNION ALL SELECT id, voraus3, 1 FROM e_attribute UNION ALL SELECT id, schutz1, 0 FROM e_attribute
      UNION ALL SELECT id, schutz2, 0 FROM e_attribute UNION ALL SELECT id, schutz3, 0 FROM e_attribute)
)SQL";

} // namespace

TEST_F(ReferenceData, TalentReferencesKeepTheRules)
{
    const QString with = QStringLiteral("WITH RECURSIVE ") + QString::fromUtf8(talentEdges);
    EXPECT_LE(count("SELECT max(length(name)) FROM e_attribute"), 16) << "Name passt nicht in die Spalte";
    EXPECT_EQ(count(with + "SELECT count(*) FROM edge WHERE b < 0 OR b > 53"), 0);
    EXPECT_EQ(count(with + "SELECT count(*) FROM edge WHERE a = b"), 0);
    // A talent leans only on its own group or on the talents for all players.
    EXPECT_EQ(count(with + R"SQL(, grp(id, g) AS (
                   SELECT id, CASE WHEN id <= 40 THEN 0 WHEN id <= 47 THEN 1 ELSE 2 END FROM e_attribute)
                 SELECT count(*) FROM edge JOIN grp ga ON ga.id = edge.a JOIN grp gb ON gb.id = edge.b
                 WHERE gb.g <> 1 AND gb.g <> ga.g)SQL"),
              0);
    EXPECT_EQ(count(with + R"SQL(, reach(start, t) AS (
                   SELECT a, b FROM edge WHERE voraus = 1 AND b > 0
                   UNION SELECT r.start, e.b FROM reach r JOIN edge e ON e.a = r.t AND e.voraus = 1 AND e.b > 0)
                 SELECT count(*) FROM reach WHERE start = t)SQL"),
              0)
        << "Voraussetzungen im Kreis";
    // The same talent twice in one row would show one picture twice.
    EXPECT_EQ(count(with + "SELECT count(*) FROM (SELECT a, voraus, b FROM edge WHERE b > 0 "
                           "GROUP BY a, voraus, b HAVING count(*) > 1)"),
              0);
}

TEST_F(ReferenceData, EveryFaceHasItsColours)
{
    // The codes documented in src/core/data/README.md.
    EXPECT_EQ(count("SELECT count(*) FROM e_gesichtsfarbe WHERE Hautfarbe NOT BETWEEN 0 AND 3 "
                    "OR Haarfarbe NOT BETWEEN 0 AND 6"),
              0);
    EXPECT_EQ(count("SELECT count(*) FROM e_gesichtsfarbe WHERE (farbe = 0) <> (Hautfarbe <= 1)"), 0);
}

TEST_F(ReferenceData, CountriesAndLeagues)
{
    const QSet<QString> known(kontinente().begin(), kontinente().end());
    for (const QString &k : texts("SELECT DISTINCT kontinent FROM e_landkontinent"))
        EXPECT_TRUE(known.contains(k)) << k.toStdString();

    EXPECT_EQ(count("SELECT count(*) FROM e_landkontinent WHERE teams = 0 AND (liga <> 0 OR quali <> '')"), 0);
    EXPECT_EQ(count("SELECT count(*) FROM e_landkontinent WHERE teams <> 0 AND (teams % 2 <> 0 OR teams < 2 "
                    "OR liga <= 0)"),
              0);
    EXPECT_EQ(count("SELECT count(*) - count(DISTINCT liga) FROM e_landkontinent WHERE teams > 0"), 0);

    const QSet<QString> codes{"CL", "CLQ", "UEFA", "UEFAQ", "UI", ""};
    Statement st = opened.db->prepare("SELECT land, teams, quali FROM e_landkontinent WHERE teams > 0");
    while (st.step()) {
        const QStringList places = st.text(2).split(QLatin1Char(','));
        EXPECT_EQ(places.size(), st.integer(1)) << st.text(0).toStdString();
        for (const QString &p : places)
            EXPECT_TRUE(codes.contains(p)) << st.text(0).toStdString() << ": " << p.toStdString();
    }
}

TEST_F(ReferenceData, KitColourTexts)
{
    const QRegularExpression form(QStringLiteral("^(  \\d| [1-9]\\d|[12]\\d\\d),(  \\d| [1-9]\\d|[12]\\d\\d),"
                                                 "(  \\d| [1-9]\\d|[12]\\d\\d)$"));
    for (const char *table : {"e_trikotfarbeoriginal", "e_trikotfarbezorbode"}) {
        SCOPED_TRACE(table);
        const QString from = QStringLiteral(" FROM ") + QLatin1String(table);
        const QStringList colours = texts("SELECT Trikot1" + from + " UNION ALL SELECT Trikot2" + from +
                                          " UNION ALL SELECT Hose" + from + " UNION ALL SELECT Streifen" + from);
        ASSERT_FALSE(colours.isEmpty());
        for (const QString &c : colours) {
            EXPECT_TRUE(form.match(c).hasMatch()) << '"' << c.toStdString() << '"';
            for (const QString &v : c.split(QLatin1Char(',')))
                EXPECT_LE(v.trimmed().toInt(), 255) << c.toStdString();
        }
    }
}

TEST(ReferenceDataLoader, MisfitNamesFileAndLine)
{
    test::TempFolder folder;
    {
        Database db(folder.file("kopf.db"));
        db.exec("CREATE TABLE e_attribute (id INTEGER PRIMARY KEY, name TEXT)");
        try {
            fillreferencetables(db);
            ADD_FAILURE() << "keine Ausnahme";
        } catch (const DbError &e) {
            EXPECT_TRUE(e.text().contains(":/reference/e_attribute.tsv, Zeile 1:")) << e.what();
        }
    }
    Database db(folder.file("zeile.db"));
    db.exec("CREATE TABLE e_attribute (id INTEGER PRIMARY KEY CHECK (id < 5), name TEXT, beschreibung TEXT, "
            "voraus1 INTEGER, voraus2 INTEGER, voraus3 INTEGER, schutz1 INTEGER, schutz2 INTEGER, schutz3 INTEGER)");
    try {
        fillreferencetables(db);
        ADD_FAILURE() << "keine Ausnahme";
    } catch (const DbError &e) {
        EXPECT_TRUE(e.text().contains(":/reference/e_attribute.tsv, Zeile 6:")) << e.what();
    }
    // All or nothing: the rows before the misfit are gone as well.
    EXPECT_EQ(db.scalar("SELECT count(*) FROM e_attribute").toLongLong(), 0);
}
