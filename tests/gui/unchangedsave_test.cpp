// Saving what the editor shows, without a change, changes nothing: every
// club, country and player of two worlds, saved twice and again after a
// visit to the other tab.
#include "core/schema.h"
#include "app/mainwindow.h"
#include "core/generator.h"
#include "core/kitcolours.h"
#include "editor/playergrid.h"
#include "exchange/configruns.h"
#include "exchange/teamfile.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::child;
using zorbo::test::dumpworld;
using zorbo::test::node;
using zorbo::test::ScriptedDialogs;
using zorbo::test::TempFolder;

namespace {

// The first difference of two dumps, for the failure message.
std::string firstdifference(const QStringList &before, const QStringList &after)
{
    for (qsizetype i = 0; i < std::max(before.size(), after.size()); ++i) {
        if (before.value(i) != after.value(i))
            return ("before: " + before.value(i) + "\nafter:  " + after.value(i)).toStdString();
    }
    return {};
}

// A world of our own with what a typed limit or a list could lose: names
// longer than their fields, first names of more than two letters, a country
// that no list holds, strengths between half stars or above six stars,
// talents out of order.
void generateworld(Database &db)
{
    const QStringList countries = {"Deutschland", "Österreich", "Schweiz"};
    const QStringList continents = {"West-Europa", "West-Europa", "Süd-Europa"};
    Statement national = db.prepare(
        "INSERT INTO vereine_national VALUES (?1, ?2, ?3, ?4, 0, 0, '', ?5, ?6, '99,121,700', ?2, ?7, ?8, ?9, ?10, "
        "70, ?11, 0, '', '', '', '', '', '', '', '', '', '', '', '', '', '')");
    Statement club = db.prepare(
        "INSERT INTO vereine VALUES (?1, ?2, ?3, ?4, 2.5, 3, '', ?5, ?6, ?7, ?8, ?9, ?10, 71, ?11, 0, "
        "'', '', '', '', '', '', '', '', '', '', '', '')");
    db.run("INSERT INTO vereine (NUMMER, NAME, GRAFIK_NR) VALUES (0, 'TRANSFERMARKT', 999)");
    spieler20new(db, 0, "TRANSFERMARKT", 4);
    qint64 team = 1;
    for (int c = 0; c < countries.size(); ++c) {
        national.bindAll(team, countries[c], countries[c].left(3).toUpper(), c, "Nationalstadion " + countries[c],
                         "Hauptstadt", continents[c], 40000 + c, c * 1000, c + 1, c + 10);
        national.exec();
        settrikotfarbe(db, team, TeamTable::VereineNational, 0);
        spieler20new(db, team, countries[c], 20);
        ++team;
        for (int k = 0; k < 3; ++k, ++team) {
            const QString name = k == 0 ? "Sportgemeinschaft Blau-Weiß Großkleinhausen 1899" : QString("FC %1 %2").arg(countries[c]).arg(k);
            club.bindAll(team, name, k == 0 ? "Großkleinhausen 1899" : name.left(12), 100 + team,
                         k == 0 ? "Stadion an der Großkleinhausener Bärenweide" : "Sportpark",
                         k == 0 ? "Großkleinhausen an der Weißach" : "Stadt", countries[c], 10000 * k, 5000, (team * 7) % 80,
                         (team * 11) % 80);
            club.exec();
            settrikotfarbe(db, team, TeamTable::Vereine, 0);
            const qint64 first = spieler20new(db, team, countries[c], 20);
            for (int i = 0; i < 20; i += 3)
                db.run("UPDATE spieler SET VORNAME = ?2, NAME = ?3, \"Stärke\" = ?4, \"Max_Stärke\" = ?5, NATION = ?6, "
                       "ERLERNT = ?7, GESPERRT = ?8, GESICHT = ?9 WHERE NUMMER = ?1",
                       first + i, i % 2 ? "Jürgen" : "Hans-Peter", "Müller-Lüdenscheidt von Großkleinhausen",
                       7250 + 13 * i, 11999, i % 4 == 0 ? "Preußen" : countries[c], i % 2 ? "5,3" : "",
                       i % 2 ? "" : "12", 8192 * (i % 5) + i % 4);
        }
    }
    // Values the game's files carry but the windows don't show: strengths
    // above six stars, a position beyond the list, numbers wider than their fields.
    db.run("UPDATE spieler SET \"Stärke\" = 12500, \"Max_Stärke\" = 14000, ART = 4, \"REST_EINSÄTZE\" = 1000, "
           "GROESSE = 1000 WHERE NUMMER % 17 = 0");
    db.run("UPDATE vereine SET STADION_SITZPL = 1000000, STADION_STEHPL = 2000000 WHERE NUMMER % 5 = 2");
}

void importsample(Database &db)
{
    for (const auto &[file, kind] : {std::pair{"1_tm.cfg", ConfigKind::Teams}, std::pair{"1_sp.cfg", ConfigKind::Players}}) {
        const ExchangeResult run = importconfig(db, QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/") + file, kind);
        ASSERT_TRUE(run.ok()) << run.result.message.toStdString();
    }
}

class UnchangedSave : public zorbo::test::WindowTest, public ::testing::WithParamInterface<bool> {
protected:
    void SetUp() override
    {
        {
            OpenedDb o = opendb(dir.path() + "/zorbo.mdb");
            ASSERT_TRUE(o.db);
            if (GetParam())
                generateworld(*o.db);
            else
                importsample(*o.db);
        }
        openwindow(true);
        tree = child<QTreeWidget>(*window, "tvdb");
        tabs = child<QTabWidget>(*window, "tabedit");
    }

    // Saves twice, visits the other tab, comes back and saves again.
    void savethrice(const char *button, int tab)
    {
        auto *save = child<QPushButton>(*window, button);
        QTest::mouseClick(save, Qt::LeftButton);
        QTest::mouseClick(save, Qt::LeftButton);
        tabs->setCurrentIndex(1 - tab);
        tabs->setCurrentIndex(tab);
        QTest::mouseClick(save, Qt::LeftButton);
    }

    QTreeWidget *tree = nullptr;
    QTabWidget *tabs = nullptr;
};

} // namespace

TEST_P(UnchangedSave, EveryTeamAndPlayerSavedAsShownLeavesEveryTableAsItWas)
{
    const QStringList before = dumpworld(*window->db());
    QStringList keys;
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        const QString key = (*it)->data(0, Qt::UserRole).toString();
        if (key.startsWith('T') || key.startsWith('L'))
            keys << key;
    }
    ASSERT_GT(keys.size(), 5);
    int players = 0;
    for (const QString &key : keys) {
        zorbo::test::clickNode(tree, key);
        if (key != "T0") {
            savethrice("btnteamsave", 0);
            ASSERT_TRUE(dialogs.asked.isEmpty()) << key.toStdString() << ": " << dialogs.asked.join('\n').toStdString();
            ASSERT_EQ(firstdifference(before, dumpworld(*window->db())), "") << key.toStdString();
        }
        if (window->editor()->gridmodel()->isEmptySquad())
            continue;
        for (int row = 0; row < window->editor()->gridmodel()->rowCount(); ++row, ++players) {
            zorbo::test::clickGridRow(*window, row);
            ASSERT_EQ(tabs->currentIndex(), 1);
            savethrice("btnspielerspeichern", 1);
            ASSERT_TRUE(dialogs.asked.isEmpty()) << key.toStdString() << " row " << row << ": "
                                                 << dialogs.asked.join('\n').toStdString();
        }
        ASSERT_EQ(firstdifference(before, dumpworld(*window->db())), "") << key.toStdString();
    }
    EXPECT_GT(players, 20);
}

INSTANTIATE_TEST_SUITE_P(Worlds, UnchangedSave, ::testing::Values(false, true),
                         [](const auto &info) { return info.param ? "Generated" : "Sample"; });

TEST(UnchangedSaveAfterOpen, ATeamFileOpenedAsANewClubLeavesTheClubShownBeforeAsItWas)
{
    TempFolder dir;
    {
        OpenedDb o = opendb(dir.path() + "/zorbo.mdb");
        importsample(*o.db);
    }
    ScriptedDialogs dialogs;
    MainWindow window(dir.path(), &dialogs);
    window.formload();
    window.show();
    auto *tree = child<QTreeWidget>(window, "tvdb");
    QTreeWidgetItem *shown = nullptr;
    for (QTreeWidgetItemIterator it(tree); *it && !shown; ++it)
        shown = (*it)->data(0, Qt::UserRole).toString().startsWith('T') && *it != node(tree, "T0") ? *it : nullptr;
    ASSERT_NE(shown, nullptr);
    const QString shownKey = shown->data(0, Qt::UserRole).toString();
    tree->setCurrentItem(shown);
    window.editor()->tvdb_NodeClick(shown);
    const QString shownName = child<QLineEdit>(window, "txtteamlang")->text();
    const QString country = child<QComboBox>(window, "cboland")->currentText();

    // Opened as a new club of the same country: the form shows the new club,
    // and its save leaves the club shown before alone.
    const auto club = [&] {
        return window.db()->scalar("SELECT NAME || '|' || NATION || '|' || STADION_NAME FROM vereine WHERE NUMMER = ?1",
                                   shownKey.mid(1).toLongLong()).toString();
    };
    const QString before = club();
    dialogs.file = QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/Fortuna Großgmain.tea");
    zorbo::test::whenModal([&](QDialog *open) {
        child<QRadioButton>(*open, "optnew(0)")->click();
        child<QComboBox>(*open, "cboland")->setCurrentText(country);
        child<QPushButton>(*open, "btnok")->click();
    }, "frmopen");
    window.action("mnudateiitem(1)")->trigger();
    const QString newKey = tree->currentItem()->data(0, Qt::UserRole).toString();
    ASSERT_NE(newKey, shownKey);
    EXPECT_EQ(child<QLineEdit>(window, "txttnr")->text(), newKey.mid(1));
    EXPECT_NE(child<QLineEdit>(window, "txtteamlang")->text(), shownName);
    QTest::mouseClick(child<QPushButton>(window, "btnteamsave"), Qt::LeftButton);
    EXPECT_EQ(club(), before);
}
