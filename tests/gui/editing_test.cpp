#include "core/schema.h"
#include "core/teamlists.h"
#include "app/mainwindow.h"
#include "core/generator.h"
#include "editor/playergrid.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::node;
using zorbo::test::child;
using zorbo::test::clickNode;

namespace {

// A small world of our own: two countries, three clubs, squads of 20.
void buildWorld(const QString &folder)
{
    OpenedDb o = opendb(folder + "/zorbo.mdb");
    Database &db = *o.db;
    db.run("INSERT INTO vereine_national (NUMMER, NAME, KURZNAME, GRAFIK_NR, NATION, KONTINENT, STADION_NAME, STADT, "
           "STADION_SITZPL, STADION_STEHPL, TRIKOT_ART, TW_TRIKOT_ART, AUSWEICH_TRIKOT_ART) VALUES "
           "(10, 'Deutschland', 'GER', 0, 'Deutschland', 'West-Europa', 'Olympiastadion', 'Berlin', 70000, 0, 1, 70, 3), "
           "(11, 'Österreich', 'AUT', 0, 'Republik Österreich', 'West-Europa', 'Prater', 'Wien', 50000, 0, 2, 70, 3)");
    db.run("INSERT INTO vereine (NUMMER, NAME, KURZNAME, GRAFIK_NR, NATION, STADION_NAME, STADT, STADION_SITZPL, "
           "STADION_STEHPL, TRIKOT_ART, TW_TRIKOT_ART, AUSWEICH_TRIKOT_ART) VALUES "
           "(20, 'FC Köln-Müngersdorf', 'Köln', 12, 'Deutschland', 'Müngersdorfer Stadion', 'Köln', 40000, 10000, 4, 70, 0), "
           "(21, 'Fortuna Düsseldorf', 'Fortuna', 13, 'Deutschland', 'Rheinstadion', 'Düsseldorf', 30000, 20000, 5, 71, 0), "
           "(22, 'SK Rapid Wien', 'Rapid', 14, 'Österreich', 'Weststadion', 'Wien', 18000, 0, 6, 70, 1)");
    const QStringList surnames = {"Müller", "Schäfer", "Weiß", "Groß", "Böhm", "Jürgens", "Köhler", "Förster",
                                  "Hübner", "Krämer", "Schröder", "Wöhrle", "Bäumler", "Dörfler", "Größl",
                                  "Lüdtke", "Mäurer", "Nußbaum", "Öztürk", "Ärmel"};
    for (int team : {20, 21, 22, 10}) {
        const qint64 first = spieler20new(db, team, team == 22 ? "Österreich" : "Deutschland", 20);
        for (int i = 0; i < 20; ++i)
            db.run("UPDATE spieler SET NAME = ?2, VORNAME = ?3, \"Stärke\" = ?4, \"Max_Stärke\" = ?5 WHERE NUMMER = ?1",
                   first + i, surnames[(i + team) % 20], QString(QChar('A' + i)) + ".", (i * 750) % 12000,
                   qMin(12000, (i * 750) % 12000 + 2000));
    }
}

class Editing : public zorbo::test::WindowTest {
protected:
    void SetUp() override
    {
        buildWorld(dir.path());
        openwindow(true);
        tree = child<QTreeWidget>(*window, "tvdb");
    }
    QString text(const char *name) { return child<QLineEdit>(*window, name)->text(); }
    void setText(const char *name, const QString &t) { child<QLineEdit>(*window, name)->setText(t); }
    bool enabled(const char *name) { return child<QWidget>(*window, name)->isEnabled(); }
    QString combo(const char *name) { return child<QComboBox>(*window, name)->currentText(); }
    void click(const char *name) { QTest::mouseClick(child<QPushButton>(*window, name), Qt::LeftButton); }
    QString db(const QString &sql) { return window->db()->scalar(sql).toString(); }
    QString db(const QString &sql, qint64 nr) { return window->db()->scalar(sql, nr).toString(); }
    PlayerGridModel *grid() { return window->editor()->gridmodel(); }
    void clickRow(int row) { zorbo::test::clickGridRow(*window, row); }

    QTreeWidget *tree = nullptr;
};

} // namespace

TEST_F(Editing, ClubCountryMarketAndContinentOpenTheirParts)
{
    auto *tabs = child<QTabWidget>(*window, "tabedit");
    auto *kontinent = child<QComboBox>(*window, "cbokontinent");
    tabs->setCurrentIndex(1);

    clickNode(tree, "T20");
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(text("txtteamlang"), "FC Köln-Müngersdorf");
    EXPECT_EQ(combo("cboland"), "Deutschland");
    EXPECT_TRUE(kontinent->isHidden());
    EXPECT_TRUE(enabled("btnteamsave") && enabled("cboland"));
    EXPECT_EQ(grid()->rowCount(), 20);

    clickNode(tree, "L11");
    EXPECT_EQ(text("txtteamlang"), "Österreich");
    EXPECT_FALSE(kontinent->isHidden());
    EXPECT_EQ(combo("cboland"), "Republik Österreich");
    EXPECT_FALSE(enabled("cboland"));
    // Ctrl+S on a national team does nothing.
    QAction *save = window->action("mnudateiitem(2)");
    int runs = 0;
    QObject::connect(save, &QAction::triggered, [&] { ++runs; });
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(grid()->isEmptySquad()) << "Österreich's national team has no players";
    EXPECT_FALSE(enabled("flxgrdspieler")) << "empty rows take no click";

    clickNode(tree, "T0");
    EXPECT_EQ(text("txtteamlang"), "TRANSFERMARKT");
    EXPECT_FALSE(enabled("btnteamsave"));
    EXPECT_EQ(grid()->rowCount(), 1700);

    clickNode(tree, "Asien");
    EXPECT_FALSE(enabled("btnteamsave") || enabled("Frame7") || enabled("Frame1"));
}

TEST_F(Editing, RenamingACountryMovesItsClubsAndSelectsItAgain)
{
    clickNode(tree, "L10");
    setText("txtteamlang", "Bundesrepublik");
    child<QComboBox>(*window, "cbokontinent")->setCurrentText("Ost-Europa");
    click("btnteamsave");
    EXPECT_TRUE(dialogs.asked.isEmpty()) << dialogs.asked.join('\n').toStdString();

    QTreeWidgetItem *country = node(tree, "L10");
    ASSERT_NE(country, nullptr);
    EXPECT_EQ(country->text(0), "Bundesrepublik");
    EXPECT_EQ(country->parent()->text(0), "Ost-Europa");
    EXPECT_TRUE(country->isSelected());
    EXPECT_EQ(country->childCount(), 2) << "both clubs follow the new name";
    const QStringList laender = window->lists()->laender()->stringList();
    EXPECT_TRUE(laender.contains("Bundesrepublik") && !laender.contains("Deutschland"));
}

TEST_F(Editing, LettersInSeatsRefuseTheSave)
{
    clickNode(tree, "T21");
    setText("txtteamlang", "Fortuna 95");
    setText("txtsitz", "30.000");
    click("btnteamsave");
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(dialogs.asked[0].contains("Sitzplätze")) << dialogs.asked[0].toStdString();
    EXPECT_EQ(node(tree, "T21")->text(0), "Fortuna Düsseldorf");
    EXPECT_EQ(db("SELECT NAME FROM vereine WHERE NUMMER = 21"), "Fortuna Düsseldorf");
    EXPECT_TRUE(window->isEnabled()) << "the busy state is undone";
}

TEST_F(Editing, PlayerRowOpensTheTabAndSaveUpdatesGridAndDatabase)
{
    clickNode(tree, "T22");
    EXPECT_FALSE(enabled("btnspielerspeichern"));
    clickRow(3);
    EXPECT_EQ(child<QTabWidget>(*window, "tabedit")->currentIndex(), 1);
    const GridPlayer player = grid()->player(3);
    EXPECT_EQ(text("txtspielernr"), QString::number(player.nummer));

    setText("txtspielername", "D'Alessandro \"Sandro\"");
    child<QComboBox>(*window, "cbospielerstärke")->setCurrentIndex(7);
    child<QComboBox>(*window, "cbospielermstärke")->setCurrentIndex(10);
    click("btnspielerspeichern");
    EXPECT_TRUE(dialogs.asked.isEmpty()) << dialogs.asked.join('\n').toStdString();
    EXPECT_EQ(grid()->player(3).name, QString("D'Alessandro \"Sandro\""));
    EXPECT_EQ(window->db()->scalar("SELECT \"Stärke\" FROM spieler WHERE NUMMER = ?1", player.nummer).toInt(), 7000);

    setText("txtspielergroesse", "");
    click("btnspielerspeichern");
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(dialogs.asked[0].contains("Größe"));

    const QString shot = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR");
    if (!shot.isEmpty()) {
        clickNode(tree, "T20");
        window->grab().save(shot + "/mainwindow-club.png");
        clickRow(4);
        window->grab().save(shot + "/mainwindow-player.png");
    }
}

TEST_F(Editing, CountriesOutsideTheListOrOfARebuiltListStayOnShowAndAreSavedAsTheyWere)
{
    // Changed behind the tree's back: the node stays until the next rebuild.
    window->db()->run("UPDATE vereine SET NATION = 'Preußen' WHERE NUMMER = 21");
    clickNode(tree, "T21");
    const auto *cboland = child<QComboBox>(*window, "cboland");
    EXPECT_EQ(cboland->currentIndex(), -1);
    EXPECT_EQ(cboland->placeholderText(), "Preußen");
    const QString status = child<QLabel>(*window, "stbstatus(1)")->text();
    EXPECT_TRUE(status.contains("Preußen")) << status.toStdString();
    click("btnteamsave");
    EXPECT_EQ(db("SELECT NATION FROM vereine WHERE NUMMER = 21"), "Preußen");

    // A rebuilt list keeps the second country of the list on show, for a club and a player.
    clickNode(tree, "T22");
    clickRow(2);
    const qint64 player = text("txtspielernr").toLongLong();
    EXPECT_EQ(combo("cbospielerland"), "Österreich");

    for (int i = 0; i < 2; ++i)
        window->action("mnupopupitem(0)")->trigger(); // the tree's "Aktualisieren"
    EXPECT_EQ(combo("cboland"), "Österreich");
    EXPECT_EQ(combo("cbospielerland"), "Österreich");
    click("btnspielerspeichern");
    EXPECT_EQ(db("SELECT NATION FROM spieler WHERE NUMMER = ?1", player), "Österreich");
    click("btnteamsave");
    click("btnteamsave");
    EXPECT_EQ(db("SELECT NATION FROM vereine WHERE NUMMER = 22"), "Österreich");
}

TEST_F(Editing, TypingLimitsStopTypingButKeepLongerStoredText)
{
    window->db()->run("UPDATE spieler SET VORNAME = 'Jürgen' WHERE NUMMER = (SELECT min(spieler) FROM vereinspieler "
                      "WHERE verein = 20)");
    clickNode(tree, "T20");
    int row = 0;
    while (grid()->player(row).vorname != QString("Jürgen"))
        ++row;
    clickRow(row);
    auto *vorname = child<QLineEdit>(*window, "txtspielervorname");
    EXPECT_EQ(vorname->text(), "Jürgen");
    vorname->setFocus();
    vorname->end(false);
    QTest::keyClicks(vorname, "xy");
    EXPECT_EQ(vorname->text(), "Jürgen") << "no room to type more";
    QTest::keyClick(vorname, Qt::Key_Backspace);
    EXPECT_EQ(vorname->text(), "Jürge");

    auto *kurz = child<QLineEdit>(*window, "txtteamkurz"); // 16
    kurz->clear();
    QTest::keyClicks(kurz, "Sechzehn Zeichen und mehr");
    EXPECT_EQ(kurz->text(), "Sechzehn Zeichen");
}

TEST_F(Editing, RefreshKeepsTheSelectionAndASmallWindowKeepsTheUpperHalf)
{
    clickNode(tree, "T22");
    window->db()->run("UPDATE vereine SET NAME = 'Rapid' WHERE NUMMER = 22");
    window->action("mnupopupitem(0)")->trigger();
    ASSERT_NE(node(tree, "T22"), nullptr);
    EXPECT_TRUE(node(tree, "T22")->text(0) == "Rapid" && node(tree, "T22")->isSelected());
    EXPECT_EQ(text("txtteamlang"), "SK Rapid Wien") << "a rebuild leaves the tabs as they are";

    auto *frame3 = child<QWidget>(*window, "Frame3");
    auto *frame1 = child<QWidget>(*window, "Frame1");
    const int upper = frame3->height();
    window->resize(1200, 1000);
    QApplication::processEvents();
    const int gridHeight = frame1->height();
    window->resize(300, 200);
    QApplication::processEvents();
    window->resize(1200, 1200);
    QApplication::processEvents();
    EXPECT_EQ(frame3->height(), upper);
    EXPECT_EQ(frame1->height(), gridHeight + 200) << "only the grid gains from a taller window";
}

TEST_F(Editing, ArrowKeysOpenWhatTheySelectAndTabLeavesTheTalentGrid)
{
    clickNode(tree, "T20");
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Down);
    ASSERT_EQ(tree->currentItem(), node(tree, "T21"));
    EXPECT_EQ(text("txttnr"), "21");

    clickRow(0);
    QTest::keyClick(child<QTableView>(*window, "flxgrdspieler"), Qt::Key_Down);
    EXPECT_EQ(text("txtspielernr"), QString::number(grid()->player(1).nummer));

    auto *talents = child<QWidget>(*window, "flxgrdattribute");
    QApplication::setActiveWindow(window.get());
    talents->setFocus();
    ASSERT_TRUE(talents->hasFocus());
    QTest::keyClick(talents, Qt::Key_Tab);
    EXPECT_FALSE(talents->hasFocus());
}

TEST_F(Editing, TheNationalTeamsFormFitsAtTheDefaultSizeAndAtTheSmallest)
{
    clickNode(tree, "L11");
    const auto check = [&](const char *when) {
        QApplication::processEvents();
        auto *tab = child<QWidget>(*window, "tabteam");
        QList<QWidget *> shown;
        for (QWidget *w : tab->findChildren<QWidget *>()) {
            if (w->isVisibleTo(window.get()) && (qobject_cast<QLineEdit *>(w) || qobject_cast<QComboBox *>(w)
                                                 || qobject_cast<QLabel *>(w) || qobject_cast<QPushButton *>(w)))
                shown << w;
        }
        ASSERT_GT(shown.size(), 15);
        for (QWidget *w : shown) {
            // Pictures have their fixed size; text must have room.
            if (w->minimumHeight() != w->maximumHeight()) {
                EXPECT_GE(w->height(), w->minimumSizeHint().height())
                    << when << ": " << w->objectName().toStdString() << " " << w->metaObject()->className();
            }
            const QRect r(w->mapTo(tab, QPoint()), w->size());
            for (QWidget *o : shown) {
                if (o == w || o->isAncestorOf(w) || w->isAncestorOf(o))
                    continue;
                const QRect q(o->mapTo(tab, QPoint()), o->size());
                EXPECT_FALSE(r.intersects(q)) << when << ": " << w->objectName().toStdString() << " overlaps "
                                              << o->objectName().toStdString();
            }
            EXPECT_TRUE(tab->rect().contains(r)) << when << ": " << w->objectName().toStdString() << " is cut";
        }
    };
    window->showMaximized();
    check("default size");
    window->showNormal();
    window->resize(1, 1);
    check("smallest size");
}
