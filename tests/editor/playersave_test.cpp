#include "core/schema.h"
#include "editor/playergrid.h"
#include "editor/playersave.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

using namespace zorbo;

namespace {

class Players : public ::testing::Test {
protected:
    void SetUp() override
    {
        // Team 5: two midfielders, a forward, two goalkeepers, out of order.
        addPlayer(1, "Zöller", "A.", 2, 4750);
        addPlayer(2, "Abel", "B.", 3, 9000);
        addPlayer(3, "Abel", "A.", 2, 12000);
        addPlayer(4, "Meier", "K.", 0, 0);
        addPlayer(5, "Baum", "T.", 0, 2000);
        db().run("DELETE FROM e_gesichtsfarbe");
        db().run("INSERT INTO e_gesichtsfarbe VALUES (6, 1, 11, 66)");
    }
    void addPlayer(int nr, const char *name, const char *vorname, int art, int staerke)
    {
        db().run("INSERT INTO spieler VALUES (?1, ?2, ?3, ?4, ?4, 'Österreich', 180, ?5, 100, 0.5, 1.5, 7, 0, 3, 4, "
                 "'1,5', '')",
                 nr, name, vorname, staerke, art);
        db().run("INSERT INTO vereinspieler VALUES (5, ?1)", nr);
    }
    Database &db() { return world.db(); }
    zorbo::test::NewWorld world;
};

} // namespace

TEST_F(Players, SquadInTheQuerysOrderWithItsStoredValues)
{
    const QList<GridPlayer> rows = loadspielerliste(db(), 5);
    ASSERT_EQ(rows.size(), 5);
    QStringList order;
    for (const GridPlayer &p : rows)
        order << *p.name + " " + *p.vorname;
    EXPECT_EQ(order, QStringList({"Baum T.", "Meier K.", "Abel A.", "Zöller A.", "Abel B."}));
    // Each column read into its own field: Zöller's values are all different.
    const GridPlayer &z = rows[3];
    EXPECT_EQ(QString("%1/%2/%3/%4/%5/%6/%7/%8/%9")
                  .arg(z.nummer).arg(z.staerke.value_or(-1)).arg(z.art.value_or(-1)).arg(z.rueckennummer.value_or(-1))
                  .arg(z.restspiele.value_or(-1)).arg(z.lieblingsposY.value_or(-1)).arg(z.verein)
                  .arg(z.haarfarbe.value_or(-1)).arg(z.erlernt.value_or("?")),
              "1/4750/2/7/100/1.5/5/4/1,5");
    EXPECT_EQ(z.gesperrt, QString(""));

    // The star entry is the half star nearest to the grid's text, "2,3 Sterne"
    // for 4500 and "2,4 Sterne" for 4750 both showing as 2.5 stars.
    for (auto [staerke, index] : std::initializer_list<std::pair<int, int>>{
             {0, 0}, {-500, 0}, {2300, 2}, {4500, 5}, {4750, 5}, {7000, 7}, {11999, 12}, {13000, 12}})
        EXPECT_EQ(sterneindexof(staerke), index) << staerke;
}

TEST_F(Players, SaveConvertsStrengthsAndKeepsTheRest)
{
    const GridPlayer zoeller = loadspielerliste(db(), 5)[3];
    // Zöller, 4750, shows as 2.5 stars: saved unchanged he keeps 4750, saved
    // with another entry he has 1000 units a half star.
    PlayerForm f = playerform(zoeller);
    GridPlayer saved;
    ASSERT_TRUE(spielersave(db(), f, &saved));
    EXPECT_EQ(db().scalar("SELECT \"Stärke\" FROM spieler WHERE NUMMER = 1").toInt(), 4750);
    EXPECT_EQ(saved, zoeller);

    f.staerkeIndex = 7;
    f.maxIndex = 10;
    f.name = "O\"Neill";
    f.vorname = "'J";
    f.art = 3;
    f.gesicht = 6 * 8192 + 1; // hair digit 6, dark skin: the table knows it
    ASSERT_TRUE(spielersave(db(), f, &saved));
    // quote() tells empty text from a Null: no talents is empty text.
    EXPECT_EQ(db().scalar("SELECT quote(NAME) || quote(VORNAME) || \"Stärke\" || '/' || \"Max_Stärke\" || '/' || ART || "
                          "'/' || HAUTFARBE || '/' || HAARFARBE || '/' || LIEBLINGSPOS_X || '/' || LIEBLINGSPOS_Y || "
                          "quote(ERLERNT) || quote(GESPERRT) FROM spieler WHERE NUMMER = 1").toString(),
              "'O\"Neill''''J'7000/10000/3/11/66/0.5/1.5'1,5'''");
    EXPECT_EQ(db().scalar("SELECT count(*) FROM vereinspieler WHERE spieler = 1 AND verein = 5").toInt(), 1);
    GridPlayer expected = zoeller;
    std::tie(expected.name, expected.vorname) = std::pair(QString("O\"Neill"), QString("'J"));
    std::tie(expected.staerke, expected.maxstaerke, expected.art) = std::tuple(7000, 10000, 3);
    std::tie(expected.gesicht, expected.hautfarbe, expected.haarfarbe) = std::tuple(6 * 8192 + 1, 11, 66);
    EXPECT_EQ(saved, expected) << "the written player, unused columns along";

    // A face the table doesn't know keeps the colours the player had.
    f = playerform(saved);
    f.gesicht = 9 * 8192;
    ASSERT_TRUE(spielersave(db(), f, &saved));
    EXPECT_EQ(saved.hautfarbe, 11);
    EXPECT_EQ(db().scalar("SELECT HAARFARBE FROM spieler WHERE NUMMER = 1").toInt(), 66);
}

TEST_F(Players, NullsAndAPositionOutsideTheListSurviveAnUnchangedSave)
{
    db().run("INSERT INTO spieler (NUMMER, ART) VALUES (6, 7)");
    db().run("INSERT INTO vereinspieler VALUES (6, 6)");
    const QString nulls = "SELECT quote(NAME) || quote(VORNAME) || quote(\"Stärke\") || quote(\"Max_Stärke\") || "
                          "quote(NATION) || quote(GROESSE) || quote(ART) || quote(\"REST_EINSÄTZE\") || "
                          "quote(RUECKENNUMMER) || quote(GESICHT) || quote(HAUTFARBE) || quote(HAARFARBE) || "
                          "quote(ERLERNT) || quote(GESPERRT) FROM spieler WHERE NUMMER = 6";
    const QString before = db().scalar(nulls).toString();
    const GridPlayer player = loadspielerliste(db(), 6).value(0);
    EXPECT_FALSE(player.name || player.staerke || player.gesicht || player.erlernt);

    PlayerForm f = playerform(player);
    GridPlayer saved;
    ASSERT_TRUE(spielersave(db(), f, &saved));
    EXPECT_EQ(db().scalar(nulls).toString(), before);
    EXPECT_EQ(saved, player);

    f.name = "Neu";
    f.groesse = "x";
    EXPECT_FALSE(spielersave(db(), f)) << "typed over a Null, a number field is checked";
    f.groesse = "";
    ASSERT_TRUE(spielersave(db(), f));
    EXPECT_EQ(db().scalar(nulls).toString(), "'Neu'" + before.mid(4));
}

TEST_F(Players, NumberFieldsAreCheckedBeforeAnythingIsWritten)
{
    PlayerForm f = playerform(loadspielerliste(db(), 5)[0]);
    f.name = "Geändert";
    for (auto [field, caption] : {std::pair{&PlayerForm::groesse, "Größe"}, std::pair{&PlayerForm::einsatz, "Resteinsätze"},
                                  std::pair{&PlayerForm::rnr, "Rückennummer"}}) {
        PlayerForm bad = f;
        bad.*field = "";
        Result r = spielersave(db(), bad);
        EXPECT_FALSE(r) << caption;
        EXPECT_TRUE(r.message.contains(QString::fromUtf8(caption))) << r.message.toStdString();
        bad.*field = "1x";
        EXPECT_FALSE(spielersave(db(), bad)) << caption;
    }
    EXPECT_EQ(db().scalar("SELECT NAME FROM spieler WHERE NUMMER = ?1", f.shown.nummer).toString(), "Baum");
}

TEST_F(Players, GridModelShowsTheStoredValuesAndEmptySquadTakesNoClick)
{
    PlayerGridModel model(nullptr, QLatin1Char(','));
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    model.setRows(loadspielerliste(db(), 5));
    const auto text = [&](int row, int column) { return model.data(model.index(row, column), Qt::DisplayRole).toString(); };
    EXPECT_EQ(model.rowCount(), 5);
    // 4750 is shown rounded to one decimal.
    for (auto [row, column, shown] : std::initializer_list<std::tuple<int, int, const char *>>{
             {4, ColPosition, "Sturm"}, {3, ColStaerke, "2,4 Sterne"}, {2, ColMaxStaerke, "6,0 Sterne"},
             {0, ColLieblingsposX, "0.5"}, {0, ColErlernt, "1,5"}})
        EXPECT_EQ(text(row, column), QString::fromUtf8(shown)) << row << "/" << column;
    EXPECT_FALSE(model.data(model.index(0, 1), PlayerGridModel::PaleRowRole).toBool());
    EXPECT_TRUE(model.data(model.index(1, 1), PlayerGridModel::PaleRowRole).toBool());
    EXPECT_FALSE(model.data(model.index(1, 0), PlayerGridModel::PaleRowRole).toBool()) << "the first column stays";
    EXPECT_TRUE(model.flags(model.index(0, 0)) & Qt::ItemIsSelectable);

    // A Null shows as nothing, a strength as no stars, an ART outside the list
    // as no position.
    GridPlayer changed = model.player(2);
    changed.name = "Neu";
    changed.staerke = changed.groesse = std::nullopt;
    changed.art = 7;
    model.setPlayer(2, changed);
    EXPECT_EQ(model.player(2), changed);
    EXPECT_EQ(QStringList({text(2, ColName), text(2, ColStaerke), text(2, ColGroesse), text(2, ColPosition)}),
              QStringList({"Neu", "0,0 Sterne", "", ""}));

    model.setRows(loadspielerliste(db(), 99));
    EXPECT_TRUE(model.isEmptySquad());
    EXPECT_EQ(model.rowCount(), 20);
    EXPECT_EQ(text(0, ColStaerke), "");
    EXPECT_EQ(model.flags(model.index(0, 0)), Qt::NoItemFlags);
    EXPECT_FALSE(model.data(model.index(1, 1), PlayerGridModel::PaleRowRole).toBool());
}
