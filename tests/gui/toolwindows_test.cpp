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

void doubleclick(QListWidget *list, int row)
{
    const QPoint at = list->visualItemRect(list->item(row)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
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

TEST_F(ToolWindows, MarketFillWipeAndCompactionAskFirstWithNoAsTheAnswer)
{
    db().exec("INSERT INTO a4spieler (name, vorname, land, verein, position, staerke) VALUES "
              "('Frei1', 'Max', 'Utopia', 'FC Export', 1, 4000), ('Frei2', 'Max', 'Utopia', 'FC Export', 2, 5000), "
              "('Frei3', 'Max', 'Deutschland', 'FC Export', 3, 6000)");
    window->action("transmarkt_item(0)")->trigger();
    EXPECT_EQ(lastasked(), "Transfermarkt|Freie Spieler in Tranfermarkt kopieren (Zufallsauswahl)?");
    EXPECT_EQ(count("SELECT count(*) FROM spieler WHERE NAME LIKE 'Frei%'"), 0);
    dialogs.answer = true;
    window->action("transmarkt_item(0)")->trigger();
    EXPECT_EQ(count("SELECT count(*) FROM spieler WHERE NAME LIKE 'Frei%'"), 3);
    EXPECT_TRUE(status().contains("3 freie Spieler")) << status().toStdString();
    db().exec("DELETE FROM a4spieler");
    const int asked = int(dialogs.asked.size());
    window->action("transmarkt_item(0)")->trigger();
    EXPECT_TRUE(status().contains("keine freien Spieler")) << status().toStdString();
    EXPECT_EQ(dialogs.asked.size(), asked + 1) << "the question only, no message box";

    dialogs.answer = false;
    window->action("mnuoptionenitem(6)")->trigger();
    EXPECT_EQ(lastasked(), "Löschen|Datenbankinhalt wirklich löschen!");
    EXPECT_EQ(count("SELECT count(*) FROM vereine"), 3);
    dialogs.answer = true;
    window->action("mnuoptionenitem(6)")->trigger();
    EXPECT_EQ(count("SELECT count(*) FROM vereine"), 1);
    EXPECT_EQ(count("SELECT count(*) FROM spieler WHERE NAME LIKE 'Frei%'"), 0) << "the market is generated anew";
    EXPECT_EQ(count("SELECT count(*) FROM vereinspieler WHERE verein = 0"), 1700);
    auto *tree = window->findChild<QTreeWidget *>("tvdb");
    EXPECT_EQ(zorbo::test::node(tree, "T10"), nullptr) << "the tree is read again";

    dialogs.answer = false;
    window->action("mnuoptionenitem(7)")->trigger();
    EXPECT_EQ(lastasked(), "Komprimieren|Datenbank komprimieren!");
    dialogs.answer = true;
    ASSERT_GT(historysize(db()).steps, 0) << "the wipe is a step";
    window->action("mnuoptionenitem(7)")->trigger();
    EXPECT_TRUE(lastasked().startsWith("Komprimieren|Der Verlauf hält ")) << lastasked().toStdString();
    EXPECT_TRUE(status().contains("komprimiert")) << status().toStdString();
    EXPECT_EQ(historysize(*window->db()).steps, 0) << "Ja drops the history";
    ASSERT_NE(window->db(), nullptr);
    EXPECT_EQ(count("SELECT count(*) FROM spieler"), 1700);
    EXPECT_NE(zorbo::test::node(tree, "T0"), nullptr);
}

TEST_F(ToolWindows, SquadNumbersAreFoundAndRepairedByDoubleClick)
{
    // Club 10 repeats a number only beyond its 20th line; club 20 at once.
    for (int i = 1; i <= 21; ++i)
        player(5000 + i, 10, QStringLiteral("Lang%1").arg(i), "L.", i);
    player(5100, 10, "Spät", "S.", 21);
    player(6000, 20, "Anton", "A.", 7);
    player(6001, 20, "Berta", "B.", 7);
    whileopen("mnutoolitem(5)", "frmrueckennummer", [&](QDialog *d) {
        child<QPushButton>(*d, "btnstart")->click();
        auto *teams = child<QComboBox>(*d, "cbovereine");
        auto *players = child<QListWidget>(*d, "lstspieler");
        ASSERT_EQ(teams->count(), 1) << "club 10 left the list when it came up";
        EXPECT_EQ(teams->currentText(), "SV Rechts");
        EXPECT_EQ(texts(players), (QStringList{"7 Anton, A.", "*7 Berta, B."}));
        screenshot(d, d->objectName() + ".png");
        auto *number = child<QLineEdit>(*d, "txtnrneu");
        auto *save = child<QPushButton>(*d, "btnupdate");
        EXPECT_FALSE(number->isEnabled());

        doubleclick(players, 1);
        ASSERT_TRUE(number->isEnabled());
        EXPECT_EQ(number->text(), "7");
        EXPECT_FALSE(child<QPushButton>(*d, "btnstart")->isEnabled());
        number->setText("0");
        save->click();
        EXPECT_EQ(count("SELECT RUECKENNUMMER FROM spieler WHERE NUMMER = 6001"), 7);
        EXPECT_TRUE(status().contains("größer als 0"));
        EXPECT_EQ(teams->count(), 1);

        doubleclick(players, 1);
        number->setText("8");
        save->click();
        EXPECT_EQ(count("SELECT RUECKENNUMMER FROM spieler WHERE NUMMER = 6001"), 8);
        EXPECT_EQ(teams->count(), 0);
        EXPECT_EQ(players->count(), 0);
        // Club 10 is found again, and leaves again: no message, as a repeat was found.
        child<QPushButton>(*d, "btnstart")->click();
        EXPECT_EQ(teams->count(), 0);
        EXPECT_TRUE(dialogs.asked.isEmpty());
        db().exec("UPDATE spieler SET RUECKENNUMMER = 22 WHERE NUMMER = 5100");
        child<QPushButton>(*d, "btnstart")->click();
        EXPECT_EQ(dialogs.asked, QStringList{"Rückennummer|Keine Fehler vorhanden"});
    });
}

TEST_F(ToolWindows, LongClubNamesAreCutByWordsAndSaved)
{
    db().exec("UPDATE vereine SET NAME = 'FC Bayern München Zwei' WHERE NUMMER = 10");
    whileopen("mnutoolitem(6)", "frmteamname", [&](QDialog *d) {
        child<QPushButton>(*d, "btnstart")->click();
        auto *clubs = child<QListWidget>(*d, "lstvereine");
        auto *name = child<QLineEdit>(*d, "txtteamneu");
        auto *save = child<QPushButton>(*d, "btnupdate");
        ASSERT_EQ(texts(clubs), QStringList{"FC Bayern München Zwei"});
        child<QRadioButton>(*d, "optname(2)")->click();
        EXPECT_TRUE(name->text().isEmpty()) << "no line chosen yet";
        click(clubs, 0);
        EXPECT_EQ(name->text(), "FC Bayern München ");
        screenshot(d, d->objectName() + ".png");
        ASSERT_TRUE(save->isEnabled());
        save->click();
        EXPECT_EQ(db().scalar("SELECT NAME FROM vereine WHERE NUMMER = 10").toString(), "FC Bayern München ");
        EXPECT_EQ(texts(clubs), QStringList{"FC Bayern München "}) << "18 characters: still too long";

        click(clubs, 0);
        child<QRadioButton>(*d, "optname(1)")->click();
        EXPECT_EQ(name->text(), "Bayern München ");
        name->clear();
        EXPECT_FALSE(save->isEnabled());
        name->setText("FC Bayern");
        save->click();
        EXPECT_EQ(db().scalar("SELECT NAME FROM vereine WHERE NUMMER = 10").toString(), "FC Bayern");
        EXPECT_EQ(clubs->count(), 0);
        EXPECT_EQ(lastasked(), "Teamname|Keine Fehler vorhanden");
    });
}

TEST_F(ToolWindows, TransferMarketSwapsWithTheFreePlayersAndBetweenClubs)
{
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
        EXPECT_FALSE(child<QComboBox>(*d, "cbovereineeditor(0)")->isVisible());
        choose(child<QComboBox>(*d, "cbovereine"), "FC Export");
        ASSERT_EQ(texts(left), (QStringList{"Anna Auch", "Nils Neu"}));
        EXPECT_EQ(left->topLevelItem(0)->text(1), "ABW");
        choose(child<QComboBox>(*d, "cbovereineeditor(1)"), "FC Links (Deutschland)");
        ASSERT_EQ(right->topLevelItemCount(), 2);
        EXPECT_EQ(right->topLevelItem(0)->text(0), "T. Torwart") << "sorted by position";
        EXPECT_TRUE(ghosted(left, 0) && ghosted(left, 1) && ghosted(right, 0) && ghosted(right, 1));
        EXPECT_FALSE(swap->isEnabled());

        click(left, 1);
        EXPECT_FALSE(ghosted(left, 1));
        EXPECT_FALSE(swap->isEnabled());
        click(right, 0);
        click(right, 1);
        EXPECT_TRUE(ghosted(right, 0)) << "a second pick ghosts the first again";
        EXPECT_TRUE(swap->isEnabled());
        screenshot(d, d->objectName() + ".png");
        swap->click();
        EXPECT_EQ(db().scalar("SELECT NAME || ' ' || VORNAME || ' ' || GROESSE FROM spieler WHERE NUMMER = 5000").toString(),
                  "Neu N. 185");
        EXPECT_EQ(count("SELECT count(*) FROM vereinspieler WHERE verein = 10"), 2);
        EXPECT_FALSE(swap->isEnabled());
        EXPECT_EQ(texts(left), (QStringList{"Anna Auch", "L. Links"})) << "the outgoing player under the exporter club";

        // Between two clubs.
        child<QRadioButton>(*d, "Opttransfer(1)")->click();
        EXPECT_EQ(left->topLevelItemCount(), 0);
        EXPECT_FALSE(swap->isEnabled());
        choose(child<QComboBox>(*d, "cbovereineeditor(0)"), "SV Rechts (Deutschland)");
        choose(child<QComboBox>(*d, "cbovereineeditor(1)"), "FC Links (Deutschland)");
        click(left, 0);
        click(right, 0);
        ASSERT_TRUE(swap->isEnabled());
        swap->click();
        EXPECT_EQ(count("SELECT verein FROM vereinspieler WHERE spieler = 5002"), 10);
        EXPECT_EQ(count("SELECT verein FROM vereinspieler WHERE spieler = 5001"), 20);
        EXPECT_EQ(right->topLevelItemCount(), 2);
    });
}

TEST_F(ToolWindows, AnAmbiguousPictureIsDecidedByAClick)
{
    player(5000, 10, "Müller", "T.", 1);
    player(5001, 20, "Müller", "G.", 2);
    player(5002, 20, "Schmidt", "A.", 3);
    const QString folder = window->settings().folder(ZorbospielerFolder);
    ASSERT_TRUE(QDir().mkpath(folder));
    zorbo::test::writeBytes(folder + "/Müller.jpg", "m");
    zorbo::test::writeBytes(folder + "/schmidt.JPG", "s");
    zorbo::test::writeBytes(folder + "/5001.jpg", "alt");
    whileopen("mnutoolitem(0)", "frmspielerbild", [&](QDialog *d) {
        auto *files = child<QListWidget>(*d, "Filbild");
        EXPECT_EQ(texts(files), (QStringList{"Müller.jpg", "schmidt.JPG"}));
        auto *names = child<QListWidget>(*d, "lstnamen");
        QStringList offered;
        QString shown;
        QTimer::singleShot(0, d, [&] {
            offered = texts(names);
            shown = child<QLabel>(*d, "Label1")->text();
            screenshot(d, d->objectName() + ".png");
            if (names->count() == 2)
                click(names, 1);
        });
        child<QPushButton>(*d, "btnstart")->click();
        EXPECT_EQ(shown, "Müller.jpg");
        ASSERT_EQ(offered.size(), 2);
        EXPECT_TRUE(offered[1].startsWith("Müller G. (Deutschland; 3")) << offered[1].toStdString();
        EXPECT_EQ(zorbo::test::readBytes(folder + "/5002.jpg"), "s");
        EXPECT_EQ(zorbo::test::readBytes(folder + "/5001.jpg"), "m");
        EXPECT_EQ(zorbo::test::readBytes(folder + "/ersetzt/5001.jpg"), "alt");
        EXPECT_EQ(files->count(), 0);
        EXPECT_TRUE(child<QPushButton>(*d, "btnstart")->isEnabled());

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
