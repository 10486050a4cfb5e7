#include "anstoss/ui/a4lists.h"
#include "anstoss/ui/workbench.h"
#include "app/busy.h"
#include "app/mainwindow.h"
#include "core/generator.h"
#include "core/landneu.h"
#include "platform/codepage.h"
#include "guisupport.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

using namespace zorbo;
using zorbo::test::child;
using zorbo::test::screenshot;
using zorbo::test::whenModal;

namespace {

const QString koenigsau = QStringLiteral(ZORBO_EXAMPLES "/anstoss/Deutschland/Bundesliga/VfL_Koenigsau.aet");

struct AnstossWindows : zorbo::test::WindowTest {
    void SetUp() override
    {
        openwindow();
        Database &db = *window->db();
        // Three clubs: one by town and country, one by name, one elsewhere.
        db.run("INSERT INTO vereine (NUMMER, NAME, KURZNAME, GRAFIK_NR, NATION, STADT, TRIKOT_ART, AUSWEICH_TRIKOT_ART, "
               "TW_TRIKOT_ART) VALUES (21, 'SC Königsau', 'SCK', 1, 'Deutschland', 'Königsau', 1, 2, 3), "
               "(22, 'Alt VfL Königsau', 'AVK', 2, 'Deutschland', 'Alt', 4, 5, 6), "
               "(23, 'FC Fern', 'FCF', 3, 'Schweiz', 'Fern', 7, 8, 9)");
        for (qint64 club : {21, 22, 23})
            spieler20new(db, club, "Deutschland", 20);
        landneu(db, "Deutschland");
        landneu(db, "Schweiz");
        window->editor()->reloadtree();
        dialogs.file = koenigsau;
    }
    int count(const char *sql) { return window->db()->scalar(QString::fromUtf8(sql)).toInt(); }
    // The players of the club FC Fern by number.
    QStringList squad()
    {
        QStringList rows;
        Statement st = window->db()->prepare("SELECT vorname || ' ' || name FROM spielerinvereine WHERE verein = 23 ORDER BY nummer");
        while (st.step())
            rows << st.text(0);
        return rows;
    }
    // The workbench for FC Fern through the target dialog ("target" sees that dialog
    // first); whether it opened.
    bool workbench(const std::function<void(QDialog *)> &inside, const std::function<void(QDialog *)> &target = {})
    {
        bool worked = false;
        whenModal([&](QDialog *d) {
            child<QRadioButton>(*d, "optnew(1)")->click();
            if (target)
                target(d);
            auto *clubs = child<QComboBox>(*d, "cboverein");
            clubs->setCurrentIndex(clubs->findText("FC Fern (Schweiz)"));
            whenModal([&](QDialog *w) {
                worked = true;
                inside(w);
            }, "frma4import");
            child<QPushButton>(*d, "btnok")->click();
        }, "frma4open");
        window->action("mnuimportitem(2)")->trigger();
        return worked;
    }
};

} // namespace

TEST_F(AnstossWindows, TargetDialogPreselectsByNameAndSendsAUtf8ClubToTheFreePlayersWhenAsked)
{
    // Which club is preselected is the anstoss library's test; here that the dialog takes it.
    QString preselected;
    whenModal([&](QDialog *d) {
        child<QRadioButton>(*d, "optnew(1)")->click();
        preselected = child<QComboBox>(*d, "cboverein")->currentText();
        child<QPushButton>(*d, "btnabbrechen")->click();
    }, "frma4open");
    window->action("mnuimportitem(2)")->trigger();
    EXPECT_EQ(preselected, "Alt VfL Königsau (Deutschland)");
    EXPECT_EQ(count("SELECT count(*) FROM a4spieler"), 0);

    // A UTF-8 copy of the file is read as UTF-8 only when the user says so.
    zorbo::test::TempFolder files;
    dialogs.file = files.file("utf8.aet");
    zorbo::test::writeBytes(dialogs.file, fromCp1252(zorbo::test::readBytes(koenigsau)).toUtf8());
    dialogs.answer = false;
    window->action("mnuimportitem(2)")->trigger();
    EXPECT_TRUE(dialogs.asked.last().contains("UTF-8") && dialogs.asked.last().contains("utf8.aet"))
        << dialogs.asked.join('\n').toStdString();
    dialogs.answer = true;
    whenModal([&](QDialog *d) {
        child<QRadioButton>(*d, "optnew(0)")->click();
        child<QPushButton>(*d, "btnok")->click();
    }, "frma4open");
    window->action("mnuimportitem(2)")->trigger();
    EXPECT_EQ(count("SELECT count(*) FROM a4spieler WHERE verein = 'VfL Königsau'"), 23);
    EXPECT_TRUE(child<QLabel>(*window, "stbstatus(1)")->text().startsWith("23 Spieler"));
    EXPECT_TRUE(child<QLabel>(*window, "stbstatus(1)")->text().startsWith("23 Spieler"));
}

TEST_F(AnstossWindows, WorkbenchFitsItsListsBuildsASquadOfTwentyAndSavesClubAndPlayers)
{
    // Shown once on a world without clubs, the target dialog follows the clubs that come.
    window->db()->exec("CREATE TABLE kept AS SELECT * FROM vereine WHERE NUMMER > 0; DELETE FROM vereine WHERE NUMMER > 0");
    window->editor()->reloadtree();
    whenModal([](QDialog *d) { child<QPushButton>(*d, "btnabbrechen")->click(); }, "frma4open");
    window->action("mnuimportitem(2)")->trigger();
    window->db()->exec("INSERT INTO vereine SELECT * FROM kept; DROP TABLE kept");
    window->db()->run("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (24, 'Borussia Mönchengladbach Amateure', 'Deutschland')");
    window->editor()->reloadtree();
    QString dropped;
    ASSERT_TRUE(workbench([&](QDialog *w) {
        // The main window takes no input while the workbench is open.
        EXPECT_EQ(QApplication::activeModalWidget(), w);
        screenshot(w, "frma4import-verein.png");
        EXPECT_EQ(child<QLineEdit>(*w, "txtteamlang")->text(), "VfL Königsau");
        auto *imp = child<QTreeWidget>(*w, "lstvimport");
        auto *ed = child<QTreeWidget>(*w, "lstveditor");
        auto *neu = child<QTreeWidget>(*w, "lstveditornew");
        auto *save = child<QPushButton>(*w, "btnspielersave");
        EXPECT_FALSE(save->isEnabled());

        // Unticking the stadium brings the database's values back.
        child<QCheckBox>(*w, "chkimport(1)")->click();
        EXPECT_EQ(child<QLineEdit>(*w, "txtstadion")->text(), "");

        auto *tabs = child<QTabWidget>(*w, "tabedit");
        tabs->setCurrentIndex(1);
        // How many a copy takes is the anstoss library's test; here the keys reach it.
        imp->setFocus();
        for (int i = 0; i < 10; ++i)
            imp->topLevelItem(i * 2)->setSelected(true);
        QTest::keyClick(imp, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(neu->topLevelItemCount(), 10);
        screenshot(w, "frma4import-spieler.png");
        // Both lists show the strength whole.
        for (QTreeWidget *list : {imp, neu}) {
            const QHeaderView *h = list->header();
            EXPECT_GE(h->sectionSize(2), static_cast<QAbstractItemView *>(list)->sizeHintForColumn(2)) << list->objectName().toStdString();
            EXPECT_LE(h->sectionViewportPosition(2) + h->sectionSize(2), list->viewport()->width())
                << list->objectName().toStdString();
        }
        tabs->setCurrentIndex(0);
        QTest::keyClick(imp, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(imp, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(neu->topLevelItemCount(), 20);
        EXPECT_TRUE(save->isEnabled());
        // Del on the first of the squad frees it.
        neu->topLevelItem(0)->setSelected(true);
        QTest::keyClick(neu, Qt::Key_Delete);
        EXPECT_EQ(neu->topLevelItemCount(), 19);
        EXPECT_FALSE(save->isEnabled());

        // A drop of the club's first player fills the twentieth place.
        ed->topLevelItem(0)->setSelected(true);
        QMimeData mime;
        mime.setData(A4List::mimetype, "lstveditor");
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(neu->viewport(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(neu->viewport(), &drop);
        EXPECT_EQ(neu->topLevelItemCount(), 20);
        dropped = ed->topLevelItem(0)->text(0);

        save->click();
        child<QPushButton>(*w, "btnteamsave")->click();
        child<QPushButton>(*w, "btnabbrechen")->click();
        }, [](QDialog *d) {
        screenshot(d, "frma4open.png");
        auto *clubs = child<QComboBox>(*d, "cboverein");
        EXPECT_GE(clubs->width(), clubs->fontMetrics().horizontalAdvance("Borussia Mönchengladbach Amateure (Deutschland)"))
            << clubs->width();
    }));
    EXPECT_EQ(count("SELECT count(*) FROM vereine WHERE NUMMER = 23 AND NAME = 'VfL Königsau' AND STADION_NAME IS NULL"), 1);
    // The club's player went onto the third slot, the file's onto the others.
    EXPECT_EQ(window->db()->scalar("SELECT vorname || ' ' || name FROM spielerinvereine WHERE verein = 23 "
                                   "ORDER BY nummer LIMIT 1 OFFSET 2").toString(), dropped);
    EXPECT_EQ(count("SELECT count(*) FROM spielerinvereine WHERE verein = 23 AND name GLOB '*[^0-9]*'"), 19);
}

TEST_F(AnstossWindows, WorkbenchReadsTheClubAgainAfterEachSave)
{
    QString kept;
    ASSERT_TRUE(workbench([&](QDialog *w) {
        auto *imp = child<QTreeWidget>(*w, "lstvimport");
        auto *ed = child<QTreeWidget>(*w, "lstveditor");
        auto *neu = child<QTreeWidget>(*w, "lstveditornew");
        auto *save = child<QPushButton>(*w, "btnspielersave");
        // The club's last player and 19 of the file's; a second press writes the same squad again.
        ed->topLevelItem(ed->topLevelItemCount() - 1)->setSelected(true);
        kept = ed->topLevelItem(ed->topLevelItemCount() - 1)->text(0);
        QTest::keyClick(ed, Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(imp, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(imp, Qt::Key_C, Qt::ControlModifier);
        ASSERT_TRUE(save->isEnabled());
        save->click();
        const QStringList first = squad();
        save->click();
        EXPECT_EQ(squad(), first);
        // The tab "Editor" lists the club as it is now.
        QStringList listed = zorbo::test::texts(ed), now = first;
        listed.sort();
        now.sort();
        EXPECT_EQ(listed, now);

        // Another run changes the club's players: the squad goes only when the user says so.
        for (const bool answer : {false, true}) {
            dialogs.asked.clear();
            dialogs.answer = answer;
            window->world()->run([](Database &db) {
                db.run("UPDATE spieler SET GROESSE = GROESSE + 1 WHERE NUMMER IN "
                       "(SELECT spieler FROM kaderzeilen WHERE verein = 23)");
                return Result::success();
            });
            EXPECT_EQ(dialogs.asked.size(), 1);
            EXPECT_EQ(neu->topLevelItemCount(), answer ? 0 : 20);
        }
        EXPECT_FALSE(save->isEnabled());

        // The club's values after its save are what unticking brings back.
        child<QPushButton>(*w, "btnteamsave")->click();
        for (int box : {3, 2, 1, 0})
            child<QCheckBox>(*w, QStringLiteral("chkimport(%1)").arg(box))->click();
        EXPECT_EQ(child<QLineEdit>(*w, "txtteamlang")->text(), "VfL Königsau");
        child<QPushButton>(*w, "btnabbrechen")->click();
    }));
    EXPECT_EQ(squad().count(kept), 1);
}

TEST_F(AnstossWindows, CountryFileGoesIntoTheFreePlayersInOneRunOrNotAtAll)
{
    dialogs.file = ZORBO_EXAMPLES "/anstoss/deutschland.lan";
    dialogs.filter = 1;
    dialogs.answer = true;
    window->action("mnuimportitem(3)")->trigger();
    EXPECT_EQ(count("SELECT count(*) FROM a4spieler"), 238);
    EXPECT_TRUE(dialogs.asked.last().contains("Phantom_Kickers")) << dialogs.asked.last().toStdString();

    // Stopped from its progress, a second run adds nothing.
    window->db()->run("DELETE FROM a4spieler");
    const int delay = Busy::setcanceldelay(0);
    zorbo::test::cancelWhenOffered();
    window->action("mnuimportitem(3)")->trigger();
    Busy::setcanceldelay(delay);
    EXPECT_EQ(count("SELECT count(*) FROM a4spieler"), 0);
}

TEST_F(AnstossWindows, WorkbenchCopiesPlayersToTheFreePlayersWithProgressAndAbbrechen)
{
    EXPECT_TRUE(workbench([&](QDialog *w) {
        auto *bench = qobject_cast<Workbench *>(w);
        ASSERT_NE(bench, nullptr);
        auto *imp = child<QTreeWidget>(*w, "lstvimport");
        imp->selectAll();
        const int delay = Busy::setcanceldelay(0);
        bool offered = false;
        zorbo::test::cancelWhenOffered(100000, [&] {
            offered = !child<QProgressBar>(*window, "prostatus")->isHidden();
        });
        bench->mnupopup_item_Click(imp, 8);
        Busy::setcanceldelay(delay);
        EXPECT_TRUE(offered) << "the copy shows its progress in the status bar";
        EXPECT_EQ(count("SELECT count(*) FROM a4spieler"), 0) << "stopped, it copies nothing";
        bench->mnupopup_item_Click(imp, 8);
        EXPECT_EQ(count("SELECT count(*) FROM a4spieler"), 23);
        child<QPushButton>(*w, "btnabbrechen")->click();
    }));
}

TEST_F(AnstossWindows, WorkbenchPicksADrawingThroughTheEditorsKitPickerAndKeepsTheFileColours)
{
    bool worked = false;
    whenModal([&](QDialog *d) {
        child<QRadioButton>(*d, "optnew(1)")->click();
        auto *clubs = child<QComboBox>(*d, "cboverein");
        clubs->setCurrentIndex(clubs->findText("FC Fern (Schweiz)"));
        whenModal([&](QDialog *w) {
            auto *bench = qobject_cast<Workbench *>(w);
            ASSERT_NE(bench, nullptr);
            whenModal([&](QDialog *picker) {
                auto *grid = picker->findChild<QTableView *>();
                ASSERT_NE(grid, nullptr);
                grid->clicked(grid->model()->index(2, 3));
                child<QPushButton>(*picker, "btnok")->click();
            }, "frmtrikotauswahl");
            bench->pictrikot_DblClick(0);
            worked = true;
            child<QPushButton>(*w, "btnteamsave")->click();
            bench->btnabbrechen_Click();
        }, "frma4import");
        child<QPushButton>(*d, "btnok")->click();
    }, "frma4open");
    window->action("mnuimportitem(2)")->trigger();
    ASSERT_TRUE(worked);
    // A new drawing, saved with the exporter's colours of the home kit.
    EXPECT_NE(count("SELECT TRIKOT_ART FROM vereine WHERE NUMMER = 23"), 7);
    EXPECT_EQ(window->db()->scalar("SELECT F_TRIKOT_SPIELER FROM vereine WHERE NUMMER = 23").toString(), "61, 70,218");
}

TEST(AnstossPictures, TheSixPicturesOfIltrikotAreDelivered)
{
    for (int image = 1; image <= 6; ++image)
        EXPECT_EQ(a4picture(image).size(), image <= 4 ? QSize(16, 16) : QSize(32, 32)) << image;
}
