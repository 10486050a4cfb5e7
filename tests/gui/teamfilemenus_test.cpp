#include "app/mainwindow.h"
#include "platform/codepage.h"
#include "exchange/configruns.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>
#include <gtest/gtest.h>
#include <functional>

using namespace zorbo;
using zorbo::test::node;
using zorbo::test::child;
using zorbo::test::whenModal;

namespace {

struct SampleWorld : zorbo::test::WindowTest {
    void SetUp() override
    {
        openwindow();
        ASSERT_TRUE(importconfig(*window->db(), ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg", ConfigKind::Teams).ok());
        ASSERT_TRUE(importconfig(*window->db(), ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg", ConfigKind::Players).ok());
        window->editor()->reloadtree();
        tree = window->findChild<QTreeWidget *>("tvdb");
    }
    int count(const char *sql) { return window->db()->scalar(QString::fromUtf8(sql)).toInt(); }

    QTreeWidget *tree = nullptr;
};

} // namespace

TEST_F(SampleWorld, ClubSavedToAFileComesBackAsANewClub)
{
    window->editor()->tvdb_NodeClick(node(tree, "T12"));
    tree->setCurrentItem(node(tree, "T12"));
    ASSERT_TRUE(window->action("mnudateiitem(2)")->isEnabled());
    dialogs.file = dir.file("Fortuna.tea");
    window->action("save")->trigger();
    ASSERT_TRUE(zorbo::test::readBytes(dialogs.file).contains("[Spieler1]")) << dialogs.asked.join('\n').toStdString();

    const int clubs = count("SELECT count(*) FROM vereine");
    whenModal([](QDialog *d) {
        child<QRadioButton>(*d, "optnew(0)")->click();
        child<QComboBox>(*d, "cboland")->setCurrentText("Schweiz");
        child<QPushButton>(*d, "btnok")->click();
    }, "frmopen");
    window->action("mnudateiitem(1)")->trigger();
    EXPECT_EQ(count("SELECT count(*) FROM vereine"), clubs + 1);
    const QString key = tree->currentItem() ? tree->currentItem()->data(0, Qt::UserRole).toString() : QString();
    ASSERT_TRUE(key.startsWith('T'));
    const qint64 team = key.mid(1).toLongLong();
    EXPECT_EQ(window->db()->scalar("SELECT NATION FROM vereine WHERE NUMMER = ?1", team).toString(), "Schweiz");
    EXPECT_EQ(window->db()->scalar("SELECT count(*) FROM vereinspieler WHERE verein = ?1", team).toInt(), 20);
}

TEST_F(SampleWorld, OpeningOverAClubPreselectsItAndCancelChangesNothing)
{
    dialogs.file = ZORBO_EXAMPLES "/beispielwelt/Fortuna Großgmain.tea";
    const int players = count("SELECT count(*) FROM spieler");
    QString preselected;
    whenModal([&preselected](QDialog *d) {
        child<QRadioButton>(*d, "optnew(1)")->click();
        preselected = child<QComboBox>(*d, "cboverein")->currentText();
        child<QPushButton>(*d, "btnabbrechen")->click();
    }, "frmopen");
    window->action("open")->trigger();
    EXPECT_EQ(preselected, "Fortuna Großgmain (Österreich)");
    EXPECT_EQ(count("SELECT count(*) FROM spieler"), players);
    EXPECT_FALSE(window->findChild<QDialog *>("frmopen")->isVisible());
}

TEST_F(SampleWorld, ATeamFileInUtf8IsReadAsUtf8OnlyWhenTheUserSaysSo)
{
    dialogs.file = dir.file("utf8.tea");
    ASSERT_TRUE(zorbo::test::writeBytes(
        dialogs.file, fromCp1252(zorbo::test::readBytes(ZORBO_EXAMPLES "/beispielwelt/Fortuna Großgmain.tea")).toUtf8()));
    const int clubs = count("SELECT count(*) FROM vereine");
    for (const bool answer : {false, true}) {
        dialogs.answer = answer;
        whenModal([](QDialog *d) {
            child<QRadioButton>(*d, "optnew(0)")->click();
            child<QPushButton>(*d, "btnok")->click();
        }, "frmopen");
        window->action("mnudateiitem(1)")->trigger();
        EXPECT_TRUE(dialogs.asked.last().contains("UTF-8")) << dialogs.asked.last().toStdString();
        EXPECT_EQ(count("SELECT count(*) FROM vereine"), clubs + (answer ? 1 : 0));
    }
    EXPECT_EQ(count("SELECT count(*) FROM vereine WHERE NAME = 'Fortuna Großgmain'"), 2)
        << "the name comes in with its umlaut, beside the club of the sample world";
}

TEST_F(SampleWorld, FileDialogsRememberTheLastFolderOfEachKind)
{
    const QString exporter = dir.file("exporter/"), teams = dir.file("teams/");
    ASSERT_TRUE(QDir().mkpath(exporter) && QDir().mkpath(teams));
    const auto opened = [&](const char *entry, const QString &answer = {}) {
        dialogs.file = answer;
        window->action(entry)->trigger();
        return dialogs.start;
    };
    EXPECT_EQ(opened("mnuimportitem(3)", exporter + "fehlt.lig"), window->settings().folder(A4datenFolder));
    EXPECT_EQ(opened("mnuimportitem(2)"), exporter) << "the league's folder, also for a club file";

    window->editor()->tvdb_NodeClick(node(tree, "T12"));
    const QString club = window->shell().showntext() + ".tea";
    EXPECT_EQ(opened("mnudateiitem(2)", teams + "Fortuna.tea"), window->settings().folder(ZorbodatenFolder) + club);
    EXPECT_EQ(opened("mnudateiitem(2)"), teams + club) << "the folder remembered, the club's name kept";
    EXPECT_EQ(opened("mnuimportitem(0)"), window->settings().folder(ZorboconfigFolder)) << "game files have their own";

    window.reset();
    openwindow();
    EXPECT_EQ(opened("mnudateiitem(1)"), teams) << "kept in the settings";
    EXPECT_EQ(opened("mnuimportitem(3)"), exporter);
}
