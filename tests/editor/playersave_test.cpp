#include "core/schema.h"
#include "editor/playergrid.h"
#include "editor/playersave.h"
#include "support/testsupport.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::TempFolder;

namespace {

class Players : public ::testing::Test {
protected:
    void SetUp() override
    {
        opened = opendb(dir.file("zorbo.mdb"));
        ASSERT_TRUE(opened.db);
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
    Database &db() { return *opened.db; }
    PlayerForm formOf(const QStringList &row)
    {
        PlayerForm f;
        f.nummer = row[ColNummer].toLongLong();
        f.name = row[ColName];
        f.vorname = row[ColVorname];
        f.staerkeIndex = sterneindex(row[ColStaerke]);
        f.maxIndex = sterneindex(row[ColMaxStaerke]);
        f.land = row[ColLand];
        f.groesse = row[ColGroesse];
        f.art = int(positionsnamen().indexOf(row[ColPosition]));
        f.einsatz = row[ColRestspiele];
        f.rnr = row[ColRueckennummer];
        f.gesicht = row[ColGesicht].toLongLong();
        f.hautfarbe = row[ColHautfarbe].toLongLong();
        f.haarfarbe = row[ColHaarfarbe].toLongLong();
        f.erlernt = row[ColErlernt];
        f.gesperrt = row[ColGesperrt];
        return f;
    }

    TempFolder dir;
    OpenedDb opened;
};

} // namespace

TEST_F(Players, SquadInTheQuerysOrderWithStarsAndPositions)
{
    const QList<QStringList> rows = loadspielerliste(db(), 5, QLatin1Char(','));
    ASSERT_EQ(rows.size(), 5);
    QStringList order;
    for (const QStringList &r : rows) {
        ASSERT_EQ(r.size(), PlayerColumnCount);
        order << r[ColName] + " " + r[ColVorname];
    }
    EXPECT_EQ(order, QStringList({"Baum T.", "Meier K.", "Abel A.", "Zöller A.", "Abel B."}));
    EXPECT_EQ(rows[0][ColPosition], "Tor");
    EXPECT_EQ(rows[2][ColPosition], "Mittelfeld");
    EXPECT_EQ(rows[4][ColPosition], "Sturm");
    EXPECT_EQ(rows[3][ColStaerke], "2,4 Sterne") << "4750 is shown rounded to one decimal";
    EXPECT_EQ(rows[4][ColStaerke], "4,5 Sterne");
    EXPECT_EQ(rows[2][ColMaxStaerke], "6,0 Sterne");
    EXPECT_EQ(rows[0][ColRueckennummer], "7");
    EXPECT_EQ(rows[0][ColRestspiele], "100");
    EXPECT_EQ(rows[0][ColErlernt], "1,5");
    EXPECT_EQ(sterneindex(rows[3][ColStaerke]), 5);
    EXPECT_EQ(sterneindex("4.5 Sterne"), 9);
    EXPECT_EQ(sterneindex("1,25 Sterne"), 2) << "2.5 half stars round to even";
}

TEST_F(Players, SaveConvertsStrengthsAndKeepsTheRest)
{
    QList<QStringList> rows = loadspielerliste(db(), 5, QLatin1Char(','));
    // Zöller, 4750, shows as 2.5 stars: saved unchanged he keeps 4750, saved
    // with another entry he has 1000 units a half star.
    PlayerForm f = formOf(rows[3]);
    ASSERT_TRUE(spielersave(db(), f));
    EXPECT_EQ(db().scalar("SELECT \"Stärke\" FROM spieler WHERE NUMMER = 1").toInt(), 4750);
    EXPECT_EQ(updatedgridrow(rows[3], f, QLatin1Char(','))[ColStaerke], rows[3][ColStaerke]);

    f.staerkeIndex = 7;
    f.maxIndex = 10;
    f.name = "O\"Neill";
    f.vorname = "'J";
    f.art = 3;
    f.gesicht = 6 * 8192 + 1; // hair digit 6, dark skin: the table knows it
    ASSERT_TRUE(spielersave(db(), f));
    Statement st = db().prepare("SELECT NAME, VORNAME, \"Stärke\", \"Max_Stärke\", ART, HAUTFARBE, HAARFARBE, "
                                "LIEBLINGSPOS_X, LIEBLINGSPOS_Y, ERLERNT, GESPERRT FROM spieler WHERE NUMMER = 1");
    ASSERT_TRUE(st.step());
    EXPECT_EQ(st.text(0), "O\"Neill");
    EXPECT_EQ(st.text(1), "'J");
    EXPECT_EQ(st.integer(2), 7000);
    EXPECT_EQ(st.integer(3), 10000);
    EXPECT_EQ(st.integer(4), 3);
    EXPECT_EQ(st.integer(5), 11);
    EXPECT_EQ(st.integer(6), 66);
    EXPECT_EQ(st.real(7), 0.5);
    EXPECT_EQ(st.real(8), 1.5);
    EXPECT_EQ(st.text(9), "1,5");
    EXPECT_FALSE(st.isNull(10)) << "no talents is empty text, not Null";
    EXPECT_EQ(db().scalar("SELECT count(*) FROM vereinspieler WHERE spieler = 1 AND verein = 5").toInt(), 1);

    const QStringList row = updatedgridrow(rows[3], f, QLatin1Char(','));
    EXPECT_EQ(row[ColStaerke], "3,5 Sterne");
    EXPECT_EQ(row[ColMaxStaerke], "5,0 Sterne");
    EXPECT_EQ(row[ColPosition], "Sturm");
    EXPECT_EQ(row[ColHautfarbe], "11");
    EXPECT_EQ(row[10], rows[3][10]) << "the unused columns travel along";

    // A face the table doesn't know keeps the colours the row had.
    f.gesicht = 9 * 8192;
    ASSERT_TRUE(spielersave(db(), f));
    EXPECT_EQ(f.hautfarbe, 11);
    EXPECT_EQ(db().scalar("SELECT HAARFARBE FROM spieler WHERE NUMMER = 1").toInt(), 66);
}

TEST_F(Players, NumberFieldsAreCheckedBeforeAnythingIsWritten)
{
    PlayerForm f = formOf(loadspielerliste(db(), 5, QLatin1Char(','))[0]);
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
    EXPECT_EQ(db().scalar("SELECT NAME FROM spieler WHERE NUMMER = ?1", f.nummer).toString(), "Baum");
}

TEST_F(Players, GridModelHoldsAllColumnsAndEmptySquadTakesNoClick)
{
    PlayerGridModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    model.setRows(loadspielerliste(db(), 5, QLatin1Char(',')));
    EXPECT_EQ(model.rowCount(), 5);
    EXPECT_EQ(model.columnCount(), 18);
    EXPECT_EQ(model.headerData(3, Qt::Horizontal, Qt::DisplayRole).toString(), "Stärke");
    EXPECT_EQ(model.headerData(8, Qt::Horizontal, Qt::DisplayRole).toString(), "Rückenummer");
    EXPECT_EQ(model.data(model.index(0, ColHaarfarbe), Qt::DisplayRole).toString(), "4");
    EXPECT_FALSE(model.data(model.index(0, 1), PlayerGridModel::PaleRowRole).toBool());
    EXPECT_TRUE(model.data(model.index(1, 1), PlayerGridModel::PaleRowRole).toBool());
    EXPECT_FALSE(model.data(model.index(1, 0), PlayerGridModel::PaleRowRole).toBool()) << "the first column stays";
    EXPECT_TRUE(model.flags(model.index(0, 0)) & Qt::ItemIsSelectable);

    QStringList changed = model.row(2);
    changed[ColName] = "Neu";
    model.setRow(2, changed);
    EXPECT_EQ(model.data(model.index(2, ColName), Qt::DisplayRole).toString(), "Neu");

    model.setRows(loadspielerliste(db(), 99, QLatin1Char(',')));
    EXPECT_TRUE(model.isEmptySquad());
    EXPECT_EQ(model.rowCount(), 20);
    EXPECT_EQ(model.flags(model.index(0, 0)), Qt::NoItemFlags);
    EXPECT_FALSE(model.data(model.index(1, 1), PlayerGridModel::PaleRowRole).toBool());
}
