#include "app/busy.h"
#include "app/mainwindow.h"
#include "core/history.h"
#include "core/settings.h"
#include "guisupport.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>
#include <gtest/gtest.h>
#include <functional>

using namespace zorbo;
using zorbo::test::child;
using zorbo::test::screenshot;
using zorbo::test::texts;

namespace {

// A main window on a fresh world with two clubs of one country.
struct ToolWindows : zorbo::test::WindowTest {
    void SetUp() override
    {
        openwindow();
        db().exec("INSERT INTO vereine_national (NUMMER, NAME, NATION) VALUES (1, 'Deutschland', 'Deutschland'); "
                  "INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (10, 'FC Links', 'Deutschland'), "
                  "(20, 'SV Rechts', 'Deutschland')");
    }
    Database &db() { return *window->db(); }
    void player(qint64 nummer, qint64 team, const QString &name, const QString &vorname, qint64 number, int art = 1)
    {
        db().run("INSERT INTO spieler (NUMMER, NAME, VORNAME, \"Stärke\", NATION, GROESSE, ART, RUECKENNUMMER) "
                 "VALUES (?1, ?2, ?3, 7000, 'Deutschland', 185, ?4, ?5)",
                 nummer, name, vorname, art, number);
        db().run("INSERT INTO vereinspieler VALUES (?1, ?2)", team, nummer);
    }
    int count(const QString &sql) { return db().scalar(sql).toInt(); }
    QString lastasked() const { return dialogs.asked.isEmpty() ? QString() : dialogs.asked.last(); }
    QString status() { return window->findChild<QLabel *>("stbstatus(1)")->text(); }

    // Works the tool window while the menu entry shows it modally, then closes it.
    void whileopen(const QString &entry, const QString &name, std::function<void(QDialog *)> work)
    {
        zorbo::test::whenModal(work, name);
        window->action(entry)->trigger();
    }

};

void click(QListWidget *list, int row)
{
    list->scrollToItem(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

void click(QTreeWidget *list, int row)
{
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->topLevelItem(row)).center());
}

bool ghosted(QTreeWidget *list, int row)
{
    return list->topLevelItem(row)->data(0, Qt::ForegroundRole).isValid();
}

void choose(QComboBox *combo, const QString &text)
{
    const int i = combo->findText(text);
    ASSERT_GE(i, 0) << text.toStdString();
    combo->setCurrentIndex(i);
    emit combo->activated(i);
}

} // namespace

TEST_F(ToolWindows, MarketFillWipeAndCompactionAskFirstAndTheWindowStaysWhileARunGoes)
{
    // The filling, wiping and compaction rules themselves are the tools library's tests.
    db().exec("INSERT INTO a4spieler (name, vorname, land, verein, position, staerke) VALUES "
              "('Frei1', 'Max', 'Utopia', 'FC Export', 1, 4000), ('Frei2', 'Max', 'Utopia', 'FC Export', 2, 5000), "
              "('Frei3', 'Max', 'Deutschland', 'FC Export', 3, 6000)");
    window->action("transmarkt_item(0)")->trigger();
    EXPECT_TRUE(lastasked().startsWith("Transfermarkt|")) << lastasked().toStdString();
    EXPECT_EQ(count("SELECT count(*) FROM spieler WHERE NAME LIKE 'Frei%'"), 0);
    dialogs.answer = true;
    window->action("transmarkt_item(0)")->trigger();
    EXPECT_EQ(count("SELECT count(*) FROM spieler WHERE NAME LIKE 'Frei%'"), 3);
    EXPECT_TRUE(status().contains("3 freie Spieler")) << status().toStdString();

    dialogs.answer = false;
    window->action("mnuoptionenitem(6)")->trigger();
    EXPECT_TRUE(lastasked().startsWith("Löschen|")) << lastasked().toStdString();
    EXPECT_EQ(count("SELECT count(*) FROM vereine"), 3);
    dialogs.answer = true;
    window->action("mnuoptionenitem(6)")->trigger();
    EXPECT_EQ(count("SELECT count(*) FROM vereine"), 1);
    auto *tree = window->findChild<QTreeWidget *>("tvdb");
    EXPECT_EQ(zorbo::test::node(tree, "T10"), nullptr) << "the tree is read again";

    dialogs.answer = false;
    window->action("mnuoptionenitem(7)")->trigger();
    EXPECT_TRUE(lastasked().startsWith("Komprimieren|")) << lastasked().toStdString();
    ASSERT_GT(historysize(db()).steps, 0) << "No keeps the history";
    // Closing the main window while the compaction runs is refused (also after Ja to "Programm beenden").
    dialogs.answer = true;
    bool closed = true;
    QTimer::singleShot(0, window.get(), [&] { closed = window->close(); });
    window->action("mnuoptionenitem(7)")->trigger();
    EXPECT_FALSE(closed);
    ASSERT_NE(window->db(), nullptr);
    EXPECT_TRUE(status().contains("komprimiert")) << status().toStdString();
    EXPECT_EQ(historysize(*window->db()).steps, 0) << "Ja drops the history";
    EXPECT_NE(zorbo::test::node(tree, "T0"), nullptr);
}

TEST_F(ToolWindows, SquadNumbersAreFoundAndRepairedByClickTypingAndEnter)
{
    // Which repeats count is the tools library's test; here the window's walk.
    player(6000, 20, "Anton", "A.", 7);
    player(6001, 20, "Berta", "B.", 7);
    whileopen("mnutoolitem(5)", "frmrueckennummer", [&](QDialog *d) {
        child<QPushButton>(*d, "btnstart")->click();
        auto *teams = child<QComboBox>(*d, "cbovereine");
        auto *players = child<QListWidget>(*d, "lstspieler");
        ASSERT_EQ(teams->count(), 1);
        EXPECT_EQ(players->count(), 2);
        screenshot(d, d->objectName() + ".png");
        auto *number = child<QLineEdit>(*d, "txtnrneu");
        EXPECT_FALSE(number->isEnabled());

        click(players, 1);
        ASSERT_TRUE(number->isEnabled()) << "one click picks the player";
        EXPECT_EQ(number->text(), "7");
        QTest::keyClicks(number, "12");
        EXPECT_EQ(number->text(), "12") << "typing replaces the number";
        QTest::keyClick(number, Qt::Key_Return);
        EXPECT_EQ(count("SELECT RUECKENNUMMER FROM spieler WHERE NUMMER = 6001"), 12) << "Enter saves";
        EXPECT_EQ(teams->count(), 0);
        EXPECT_EQ(players->count(), 0);
        child<QPushButton>(*d, "btnstart")->click();
        EXPECT_EQ(dialogs.asked.size(), 1) << "nothing left: the user is told";
    });
}

TEST_F(ToolWindows, LongClubNamesAreCutByWordsAndSaved)
{
    // The proposals themselves are the tools library's test.
    db().exec("UPDATE vereine SET NAME = 'FC Bayern München Zwei' WHERE NUMMER = 10");
    whileopen("mnutoolitem(6)", "frmteamname", [&](QDialog *d) {
        child<QPushButton>(*d, "btnstart")->click();
        auto *clubs = child<QListWidget>(*d, "lstvereine");
        auto *name = child<QLineEdit>(*d, "txtteamneu");
        auto *save = child<QPushButton>(*d, "btnupdate");
        ASSERT_EQ(clubs->count(), 1);
        child<QRadioButton>(*d, "optname(2)")->click();
        click(clubs, 0);
        EXPECT_EQ(name->text(), "FC Bayern München");
        screenshot(d, d->objectName() + ".png");
        name->clear();
        EXPECT_FALSE(save->isEnabled());
        name->setText("FC Bayern");
        save->click();
        EXPECT_EQ(db().scalar("SELECT NAME FROM vereine WHERE NUMMER = 10").toString(), "FC Bayern");
        EXPECT_EQ(clubs->count(), 0);
    });
}

TEST_F(ToolWindows, BothChecksSayWhenTheSearchWasStoppedOrTheDatabaseFailed)
{
    player(6000, 20, "Anton", "A.", 7);
    player(6001, 20, "Berta", "B.", 7);
    db().exec("UPDATE vereine SET NAME = 'FC Bayern München Zwei' WHERE NUMMER = 10");
    for (const auto &[entry, name] : {std::pair{"mnutoolitem(5)", "frmrueckennummer"}, {"mnutoolitem(6)", "frmteamname"}}) {
        dialogs.asked.clear();
        whileopen(entry, name, [&](QDialog *d) {
            auto *start = child<QPushButton>(*d, "btnstart");
            const int delay = Busy::setcanceldelay(0);
            zorbo::test::cancelWhenOffered();
            start->click();
            Busy::setcanceldelay(delay);
            db().exec("ALTER TABLE vereine RENAME TO vereine_weg");
            start->click();
            db().exec("ALTER TABLE vereine_weg RENAME TO vereine");
            EXPECT_TRUE(start->isEnabled());
        });
        EXPECT_TRUE(dialogs.asked.size() == 2 && dialogs.asked[0].contains("abgebrochen") &&
                    dialogs.asked[1].contains("fehlgeschlagen") && dialogs.asked[1].contains("Tabelle vereine "))
            << dialogs.asked.join('\n').toStdString();
    }
}

TEST_F(ToolWindows, TransferMarketSwapsWithTheFreePlayersAndBetweenClubs)
{
    // What a swap writes is the tools library's test; here the picks that allow it.
    player(5000, 10, "Links", "L.", 1, 1);
    player(5001, 10, "Torwart", "T.", 2, 0);
    player(5002, 20, "Rechts", "R.", 3, 3);
    db().exec("INSERT INTO a4spieler (name, vorname, land, verein, position, staerke) VALUES "
              "('Neu', 'Nils', 'Utopia', 'FC Export', 2, 5000), ('Auch', 'Anna', 'Utopia', 'FC Export', 1, 3000)");
    window->editor()->reloadtree();
    whileopen("transmarkt_item(1)", "frmtransmarkt", [&](QDialog *d) {
        auto *left = child<QTreeWidget>(*d, "lstvfspieler");
        auto *right = child<QTreeWidget>(*d, "lstvtmarkt");
        auto *swap = child<QPushButton>(*d, "btnspielertausch");
        choose(child<QComboBox>(*d, "cbovereine"), "FC Export");
        ASSERT_EQ(texts(left), (QStringList{"Anna Auch", "Nils Neu"}));
        choose(child<QComboBox>(*d, "cbovereineeditor(1)"), "FC Links (Deutschland)");
        ASSERT_EQ(right->topLevelItemCount(), 2);
        EXPECT_TRUE(ghosted(left, 0) && ghosted(left, 1) && ghosted(right, 0) && ghosted(right, 1));

        click(left, 1);
        EXPECT_FALSE(swap->isEnabled());
        click(right, 0);
        click(right, 1);
        EXPECT_TRUE(ghosted(right, 0)) << "a second pick ghosts the first again";
        EXPECT_TRUE(swap->isEnabled());
        auto *said = child<QLabel>(*d, "lbltausch");
        EXPECT_TRUE(said->text().startsWith("Nils Neu (frei, FC Export) kommt zu FC Links") &&
                    said->text().contains("L. Links geht zu den freien Spielern")) << said->text().toStdString();
        screenshot(d, d->objectName() + ".png");
        swap->click();
        EXPECT_EQ(db().scalar("SELECT NAME FROM spieler WHERE NUMMER = 5000").toString(), "Neu");
        EXPECT_FALSE(swap->isEnabled());
        EXPECT_EQ(texts(left), (QStringList{"Anna Auch", "L. Links"})) << "the lists are read again";

        // Between two clubs.
        child<QRadioButton>(*d, "Opttransfer(1)")->click();
        EXPECT_EQ(left->topLevelItemCount(), 0);
        choose(child<QComboBox>(*d, "cbovereineeditor(0)"), "SV Rechts (Deutschland)");
        choose(child<QComboBox>(*d, "cbovereineeditor(1)"), "FC Links (Deutschland)");
        click(left, 0);
        click(right, 0);
        ASSERT_TRUE(swap->isEnabled());
        EXPECT_TRUE(said->text().startsWith("R. Rechts geht von SV Rechts")) << said->text().toStdString();
        swap->click();
        EXPECT_EQ(count("SELECT verein FROM vereinspieler WHERE spieler = 5002"), 10);
    });
}

TEST_F(ToolWindows, AnAmbiguousPictureIsDecidedByAClick)
{
    // Which file goes where is the tools library's test; here the question and its stop.
    player(5000, 10, "Müller", "T.", 1);
    player(5001, 20, "Müller", "G.", 2);
    const QString folder = window->settings().folder(ZorbospielerFolder);
    ASSERT_TRUE(QDir().mkpath(folder));
    zorbo::test::writeBytes(folder + "/Müller.jpg", "m");
    whileopen("mnutoolitem(0)", "frmspielerbild", [&](QDialog *d) {
        auto *files = child<QListWidget>(*d, "Filbild");
        auto *names = child<QListWidget>(*d, "lstnamen");
        int offered = 0;
        QTimer::singleShot(0, d, [&] {
            offered = names->count();
            screenshot(d, d->objectName() + ".png");
            if (names->count() == 2)
                click(names, 1);
        });
        child<QPushButton>(*d, "btnstart")->click();
        EXPECT_EQ(offered, 2);
        EXPECT_EQ(zorbo::test::readBytes(folder + "/5001.jpg"), "m");
        EXPECT_EQ(files->count(), 0);

        // Closed while it waits: the run ends and the picture stays as it is.
        zorbo::test::writeBytes(folder + "/Müller.jpg", "offen");
        QTimer::singleShot(0, d, [d] { d->close(); });
        child<QPushButton>(*d, "btnstart")->click();
        EXPECT_FALSE(d->isVisible());
        EXPECT_EQ(zorbo::test::readBytes(folder + "/Müller.jpg"), "offen");
        EXPECT_EQ(zorbo::test::readBytes(folder + "/5001.jpg"), "m");
        EXPECT_TRUE(status().startsWith("Abgebrochen")) << status().toStdString();
    });
}

