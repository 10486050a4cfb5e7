#include "core/schema.h"
#include "app/mainwindow.h"
#include "core/generator.h"
#include "editor/playergrid.h"
#include "editor/ui/talentgrid.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QApplication>
#include <QDirIterator>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QPixmapCache>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>
#include <algorithm>
#include <gtest/gtest.h>

using namespace zorbo;

namespace {

// Club 20 with a goalkeeper (row 0), two field players (rows 1, 2) and
// talent lists of our own.
qint64 buildWorld(const QString &folder)
{
    OpenedDb o = opendb(folder + "/zorbo.mdb");
    Database &db = *o.db;
    db.run("INSERT INTO vereine_national (NUMMER, NAME, KURZNAME, GRAFIK_NR, NATION, KONTINENT, STADION_NAME, STADT, "
           "STADION_SITZPL, STADION_STEHPL, TRIKOT_ART, TW_TRIKOT_ART, AUSWEICH_TRIKOT_ART) VALUES "
           "(10, 'Deutschland', 'GER', 0, 'Deutschland', 'West-Europa', 'Olympiastadion', 'Berlin', 70000, 0, 1, 70, 3)");
    db.run("INSERT INTO vereine (NUMMER, NAME, KURZNAME, GRAFIK_NR, NATION, STADION_NAME, STADT, STADION_SITZPL, "
           "STADION_STEHPL, TRIKOT_ART, TW_TRIKOT_ART, AUSWEICH_TRIKOT_ART) VALUES "
           "(20, 'FC Köln', 'Köln', 12, 'Deutschland', 'Stadion', 'Köln', 40000, 10000, 4, 70, 0)");
    const qint64 first = spieler20new(db, 20, "Deutschland", 3);
    db.run("UPDATE spieler SET ART = 0, ERLERNT = '47, 3', GESPERRT = '' WHERE NUMMER = ?1", first);
    db.run("UPDATE spieler SET ART = 2, ERLERNT = '2', GESPERRT = '77' WHERE NUMMER = ?1", first + 1);
    db.run("UPDATE spieler SET ART = 3, ERLERNT = '', GESPERRT = '' WHERE NUMMER = ?1", first + 2);
    return first;
}

class Talents : public zorbo::test::WindowTest {
protected:
    void SetUp() override
    {
        first = buildWorld(dir.path());
        openwindow(true);
        zorbo::test::clickNode(window->findChild<QTreeWidget *>("tvdb"), "T20");
        talents = window->findChild<TalentGrid *>("flxgrdattribute");
        ASSERT_NE(talents, nullptr);
    }
    // Clicks the grid row of a player by his number.
    void showPlayer(qint64 nummer)
    {
        for (int r = 0; r < window->editor()->gridmodel()->rowCount(); ++r)
            if (window->editor()->gridmodel()->player(r).nummer == nummer)
                return zorbo::test::clickGridRow(*window, r);
        FAIL() << "no row for " << nummer;
    }
    void clickCell(int row, int column, Qt::MouseButton button = Qt::LeftButton)
    {
        talents->scrollToItem(talents->item(row, column));
        QTest::mouseClick(talents->viewport(), button, {}, talents->visualItemRect(talents->item(row, column)).center());
    }
    QString state(int row) { return talents->item(row, 16)->text(); }

    TalentGrid *talents = nullptr;
    qint64 first = 0;
};

} // namespace

TEST_F(Talents, AGoalkeeperThenAFieldPlayerChangeTheRowsOnView)
{
    showPlayer(first);
    EXPECT_TRUE(talents->isRowHidden(0));
    EXPECT_EQ(state(47), "48");
    EXPECT_EQ(state(3), "4") << "a talent out of view keeps its state";
    const int changes = talents->layoutchanges();

    showPlayer(first + 1);
    EXPECT_FALSE(talents->isRowHidden(0));
    EXPECT_TRUE(talents->isRowHidden(52));
    EXPECT_EQ(talents->layoutchanges(), changes + 1);
    EXPECT_EQ(state(47), "0");

    EXPECT_TRUE(window->findChild<QLabel *>("stbstatus(1)")->text().contains("77")) << "a number without a row";

    showPlayer(first + 2);
    EXPECT_EQ(talents->layoutchanges(), changes + 1) << "two field players leave the heights alone";
}

TEST_F(Talents, ThreeClicksBringATalentBackToNoneAndTheSaveStoresTheGrid)
{
    showPlayer(first + 2);
    // The order of the states is the editor library's test; here the clicks reach it.
    clickCell(5, 2);
    clickCell(5, 0, Qt::RightButton);
    EXPECT_EQ(state(5), "0") << "a click on the texts or with the right button changes nothing";
    clickCell(5, 1);
    EXPECT_EQ(state(5), "6");
    clickCell(5, 0);
    clickCell(5, 1);
    EXPECT_EQ(state(5), "0");

    clickCell(9, 0);
    clickCell(1, 0);
    clickCell(1, 0);
    QTest::mouseClick(window->findChild<QPushButton *>("btnspielerspeichern"), Qt::LeftButton);
    Database &db = *window->db();
    EXPECT_EQ(db.scalar("SELECT ERLERNT || '/' || GESPERRT FROM spieler WHERE NUMMER = ?1", first + 2).toString(), "9/1");
}

TEST_F(Talents, NumbersWithoutARowStayStoredOnASave)
{
    showPlayer(first + 1);
    QTest::mouseClick(window->findChild<QPushButton *>("btnspielerspeichern"), Qt::LeftButton);
    EXPECT_EQ(window->db()->scalar("SELECT GESPERRT FROM spieler WHERE NUMMER = ?1", first + 1).toString(), "77");
    EXPECT_EQ(window->db()->scalar("SELECT ERLERNT FROM spieler WHERE NUMMER = ?1", first).toString(), "47, 3")
        << "an unsaved player keeps his lists";
}

TEST(DeliveredPictures, EverySetIsThereInItsSize)
{
    for (int i = 0; i < 53; ++i) {
        const QImage img(QStringLiteral(":/defaults/attribute/attribute_hell_%1.gif").arg(i, 2, 10, QLatin1Char('0')));
        EXPECT_EQ(img.size(), QSize(16, 16)) << i;
    }
    for (const char *set : {"original", "zorbode"})
        for (int i = 0; i < 80; ++i) {
            const QImage img(QStringLiteral(":/defaults/trikot/%1/trikot_%2.gif").arg(set).arg(i, 2, 10, QLatin1Char('0')));
            EXPECT_EQ(img.size(), QSize(61, 71)) << set << i;
        }
    struct Count { const char *colour, *part; int count; };
    const Count counts[] = {{"weiss", "nase", 31}, {"weiss", "mund", 30}, {"weiss", "augen", 30}, {"weiss", "kinn", 11},
                            {"weiss", "haare", 30}, {"schwarz", "nase", 9}, {"schwarz", "mund", 9},
                            {"schwarz", "augen", 2}, {"schwarz", "haare", 9}, {"schwarz", "kinn", 1}};
    for (const Count &c : counts)
        for (int n = 1; n <= c.count; ++n) {
            const QImage img(QStringLiteral(":/defaults/gesicht/sp_gesicht_%1_%2_%3.gif").arg(c.colour, c.part).arg(n));
            ASSERT_EQ(img.size(), QSize(85, 100)) << c.colour << c.part << n;
            EXPECT_TRUE(img.hasAlphaChannel()) << "a part shows only where it is drawn";
        }
    EXPECT_FALSE(QImage(":/defaults/gesicht/sp_gesicht_schwarz_grund.gif").isNull());
    EXPECT_FALSE(QImage(":/icons/erlernt.png").isNull());
}

TEST_F(Talents, TheSmallestWindowShowsTheTalentsWhole)
{
    window->resize(1, 1);
    showPlayer(first + 1);
    QApplication::processEvents();
    int columns = 0;
    for (int c = 0; c < talents->columnCount(); ++c)
        if (!talents->isColumnHidden(c))
            columns += talents->columnWidth(c);
    EXPECT_GE(talents->viewport()->width(), columns) << "no talent column cut";
    EXPECT_GE(talents->viewport()->height(), 6 * talents->verticalHeader()->defaultSectionSize()) << "six rows at least";
}
