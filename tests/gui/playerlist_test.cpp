// The Spielerliste walked as a user walks it: open it, filter, select, edit
// many players with a preview, undo, open a player, and a spreadsheet file
// out and in again.
#include "app/mainwindow.h"
#include "editor/ui/playerlistmodel.h"
#include "editor/ui/playerlistview.h"
#include "guisupport.h"
#include "support/cli.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QHeaderView>
#include <QSpinBox>
#include <QTreeWidget>

using namespace zorbo;
using zorbo::test::child;

namespace {

class PlayerListWalk : public zorbo::test::WindowTest {
protected:
    void SetUp() override
    {
        const QString d = dir.path();
        for (const QStringList &args : {QStringList{"init"}, QStringList{"import-teams", ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg"},
                                        QStringList{"import-players", ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg"}})
            ASSERT_EQ(test::runCli(QStringList{"--dir", d} + args).exitCode, 0);
        openwindow(true);
        window->findChild<QAction *>("mnubearbeitenitem(5)")->trigger();
        view = window->findChild<PlayerListView *>("frmspielerliste");
        ASSERT_NE(view, nullptr);
        table = child<QTableView>(*view, "tblspieler");
        tester = std::make_unique<QAbstractItemModelTester>(table->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    QString count() { return child<QLabel>(*view, "lblanzahl")->text(); }
    QString cell(int row, ListColumn c) { return table->model()->index(row, int(c)).data().toString(); }

    PlayerListView *view = nullptr;
    QTableView *table = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

} // namespace

TEST_F(PlayerListWalk, FilterSelectEditInBulkUndoAndOpenAPlayer)
{
    EXPECT_TRUE(window->findChild<QDockWidget *>("dockspielerliste")->isVisible());
    EXPECT_EQ(count(), "45 von 45 Spielern");
    QTest::keyClicks(child<QLineEdit>(*view, "txtfiltertext"), "weiss");
    const int weiss = table->model()->rowCount();
    EXPECT_EQ(count(), QStringLiteral("%1 von 45 Spielern").arg(weiss));
    ASSERT_GE(weiss, 2);
    for (int r = 0; r < weiss; ++r)
        EXPECT_EQ(cell(r, ListColumn::Name), "Weiß");
    if (qEnvironmentVariableIsSet("ZORBO_SCREENSHOT_DIR")) {
        auto *dock = window->findChild<QDockWidget *>("dockspielerliste");
        dock->setFloating(true);
        dock->resize(1000, 560);
        QApplication::processEvents();
        zorbo::test::screenshot(dock, "spielerliste.png");
    }
    auto *land = child<QComboBox>(*view, "cbofilterland");
    land->setCurrentIndex(land->findText("Deutschland"));
    const int german = table->model()->rowCount();
    ASSERT_GE(german, 1);
    ASSERT_LT(german, weiss);

    // All rows the filter shows, each half a star stronger, through the preview.
    table->selectAll();
    const QStringList before = test::dumpworld(*window->db(), {"spieler"});
    const qint64 first = table->model()->index(0, 0).data().toLongLong();
    const qint64 strength = window->db()->scalar("SELECT \"Stärke\" FROM spieler WHERE NUMMER = ?1", first).toLongLong();
    QString summary;
    test::whenModal([&](QDialog *d) {
        child<QComboBox>(*d, "cboaenderung")->setCurrentIndex(1);
        child<QSpinBox>(*d, "spnschritte")->setValue(1);
        summary = child<QLabel>(*d, "lblvorschau")->text();
        EXPECT_GE(child<QTreeWidget>(*d, "lstvvorschau")->topLevelItemCount(), german);
        d->resize(760, 480);
        zorbo::test::screenshot(d, "auswahlbearbeiten.png");
        QTest::mouseClick(child<QPushButton>(*d, "btnuebernehmen"), Qt::LeftButton);
    }, "frmauswahlbearbeiten");
    QTest::mouseClick(child<QPushButton>(*view, "btnauswahlbearbeiten"), Qt::LeftButton);
    EXPECT_EQ(summary, QStringLiteral("%1 Spieler ändern sich.").arg(german)) << summary.toStdString();
    EXPECT_EQ(window->db()->scalar("SELECT \"Stärke\" FROM spieler WHERE NUMMER = ?1", first).toLongLong(),
              std::min<qint64>(strength + 1000, 12000));
    EXPECT_EQ(table->model()->rowCount(), german) << "the list stays on its filter";

    window->findChild<QAction *>("mnubearbeitenitem(0)")->trigger();
    EXPECT_EQ(test::dumpworld(*window->db(), {"spieler"}), before) << "one step undoes it all";

    // A double click opens the player in the main window.
    const QModelIndex row = table->model()->index(0, 1);
    const qint64 player = table->model()->index(0, 0).data().toLongLong();
    table->scrollTo(row);
    // As the mouse does it: a press and release, then the double click.
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(row).center());
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(row).center());
    EXPECT_EQ(child<QLineEdit>(*window, "txtspielernr")->text(), QString::number(player));
}

// On a window of 1400 × 900 the list opens beside the forms, a tab with the
// other panels, and the squad grid of a club keeps at least eight rows.
TEST_F(PlayerListWalk, LeavesTheSquadGridItsRows)
{
    window->resize(1400, 900);
    test::clickNode(child<QTreeWidget>(*window, "tvdb"), "T14");
    QApplication::processEvents();
    auto *grid = child<QTableView>(*window, "flxgrdspieler");
    ASSERT_GE(grid->model()->rowCount(), 8);
    int shown = 0;
    for (int r = 0; r < grid->model()->rowCount(); ++r)
        shown += grid->viewport()->rect().contains(grid->visualRect(grid->model()->index(r, 0)));
    EXPECT_GE(shown, 8);
    EXPECT_LE(window->width(), 1400) << "the list fits beside the forms";
    EXPECT_GE(table->viewport()->height(), 10 * table->verticalHeader()->defaultSectionSize()) << "and shows rows of its own";
    window->findChild<QAction *>("mnutoolitem(8)")->trigger();
    EXPECT_TRUE(window->tabifiedDockWidgets(window->findChild<QDockWidget *>("dockspielerliste"))
                    .contains(window->findChild<QDockWidget *>("dockprobleme")));
}

TEST_F(PlayerListWalk, NamedFiltersAndTheSpreadsheetFile)
{
    child<QCheckBox>(*view, "chkohneverein")->setChecked(false);
    auto *position = child<QComboBox>(*view, "cbofilterposition");
    position->setCurrentIndex(1); // Tor
    const int keepers = table->model()->rowCount();
    ASSERT_GT(keepers, 0);
    dialogs.typed = "Torhüter";
    QTest::mouseClick(child<QPushButton>(*view, "btnfilterspeichern"), Qt::LeftButton);
    position->setCurrentIndex(0);
    EXPECT_EQ(table->model()->rowCount(), 45);
    auto *saved = child<QComboBox>(*view, "cbofiltergespeichert");
    const int named = saved->findText("Torhüter");
    ASSERT_GT(named, 0);
    saved->setCurrentIndex(named);
    emit saved->activated(named);
    EXPECT_EQ(table->model()->rowCount(), keepers);
    EXPECT_EQ(position->currentIndex(), 1);

    // The keepers out to a file and in again: nothing to take over, no step.
    dialogs.file = dir.file("torhueter.csv");
    QTest::mouseClick(child<QPushButton>(*view, "btncsvexport"), Qt::LeftButton);
    EXPECT_EQ(test::readBytes(dialogs.file).count("\r\n"), keepers + 1);
    const qsizetype steps = window->world()->history().size();
    QString summary;
    bool enabled = true;
    test::whenModal([&](QDialog *d) {
        summary = child<QLabel>(*d, "lblvorschau")->text();
        enabled = child<QPushButton>(*d, "btnuebernehmen")->isEnabled();
    }, "frmcsvimport");
    QTest::mouseClick(child<QPushButton>(*view, "btncsvimport"), Qt::LeftButton);
    EXPECT_TRUE(summary.startsWith("Keine Änderung")) << summary.toStdString();
    EXPECT_FALSE(enabled);
    EXPECT_EQ(window->world()->history().size(), steps);
}
