// The self-check window, the question before an export over a changed game
// file, and crests from pictures.
#include "app/busy.h"
#include "app/mainwindow.h"
#include "guisupport.h"
#include "core/history.h"
#include "resources/crestfiles.h"
#include "resources/ui/crestpicturewindow.h"
#include "resources/tga.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QPainter>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::child;
using zorbo::test::readBytes;
using zorbo::test::screenshot;
using zorbo::test::whenModal;
using zorbo::test::writeBytes;

namespace {

using Trust = zorbo::test::WindowTest;

QString example(const char *name)
{
    return QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/") + QLatin1String(name);
}

QStringList rows(QTreeWidget *list)
{
    QStringList r;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QStringList cells;
        for (int c = 0; c < list->columnCount(); ++c)
            cells << list->topLevelItem(i)->text(c);
        r << cells.join('|');
    }
    return r;
}

} // namespace

TEST_F(Trust, SelfCheckWindowListsEachDifference)
{
    openwindow(true);
    zorbo::test::TempFolder game;
    QByteArray teams = readBytes(example("1_tm.cfg"));
    teams.replace("        STAERKE                  2.5\r\n", "        STAERKE                  2.50\r\n");
    writeBytes(game.file("1_tm.cfg"), teams);
    writeBytes(game.file("1_sp.cfg"), readBytes(example("1_sp.cfg")));
    QStringList listed;
    QString answer, cancelled;
    whenModal(
        [&](QDialog *d) {
            child<QLineEdit>(*d, "txtordner")->setText(QDir::toNativeSeparators(game.path()));
            QTest::mouseClick(child<QPushButton>(*d, "btnpruefen"), Qt::LeftButton);
            listed = rows(child<QTreeWidget>(*d, "lstunterschiede"));
            answer = child<QLabel>(*d, "lblergebnis")->text();
            screenshot(d, "frmspieldateien.png");
            // "Abbrechen" while it runs: the answer says so, the list stays empty.
            const int delay = Busy::setcanceldelay(0);
            zorbo::test::cancelWhenOffered();
            QTest::mouseClick(child<QPushButton>(*d, "btnpruefen"), Qt::LeftButton);
            Busy::setcanceldelay(delay);
            cancelled = child<QLabel>(*d, "lblergebnis")->text();
            EXPECT_EQ(child<QTreeWidget>(*d, "lstunterschiede")->topLevelItemCount(), 0);
            QTest::mouseClick(child<QPushButton>(*d, "btnschliessen"), Qt::LeftButton);
        },
        "frmspieldateien");
    window->action("mnutoolitem(11)")->trigger();
    ASSERT_EQ(listed.size(), 1);
    EXPECT_EQ(listed[0], "1_tm.cfg|25|        STAERKE                  2.50|        STAERKE                  2.5|dieselbe Zahl in "
                         "anderer Schreibweise");
    EXPECT_EQ(answer, "1 Unterschied in 1 von 2 Dateien.");
    EXPECT_TRUE(cancelled.startsWith("Abgebrochen")) << cancelled.toStdString();
    EXPECT_EQ(readBytes(game.file("1_tm.cfg")), teams);
}

TEST_F(Trust, ExportOverAChangedFileAsksWithoutADefault)
{
    openwindow();
    MainWindow &w = *window;
    const QString file = dir.file("1_tm.cfg");
    writeBytes(file, readBytes(example("1_tm.cfg")));
    dialogs.file = file;
    dialogs.filter = 0;
    w.action("mnuimportitem(0)")->trigger();
    // Unchanged since the import: no question.
    dialogs.choice = 0; // "Exportieren" despite problems, if any
    w.action("mnuexportitem(0)")->trigger();
    for (const QString &a : std::as_const(dialogs.asked))
        EXPECT_FALSE(a.contains("ohne Vorgabe")) << (a).toStdString();

    const QByteArray theirs = readBytes(file) + "\r\n";
    writeBytes(file, theirs);
    // "Abbrechen": nothing written.
    dialogs.choose_nodefault = 2;
    w.action("mnuexportitem(0)")->trigger();
    const QString question = dialogs.asked.last();
    EXPECT_TRUE(question.startsWith("Export|Die Datei " + QDir::toNativeSeparators(file) + " wurde am ")) << (question).toStdString();
    EXPECT_TRUE(question.endsWith("|Überschreiben/Erst vergleichen/Abbrechen|ohne Vorgabe")) << (question).toStdString();
    EXPECT_EQ(readBytes(file), theirs);

    // "Erst vergleichen": the file beside the world in "Welten vergleichen"
    // (a blank line more holds no other club), nothing written.
    dialogs.choose_nodefault = 1;
    QString source, counts;
    whenModal(
        [&](QDialog *d) {
            source = child<QLabel>(*d, "lblquelle")->text();
            counts = child<QLabel>(*d, "lblanzahl")->text();
        },
        "frmvergleich");
    w.action("mnuexportitem(0)")->trigger();
    EXPECT_TRUE(source.contains("„1_tm.cfg“")) << source.toStdString();
    EXPECT_EQ(counts, "Die beiden Welten sind gleich.");
    EXPECT_EQ(readBytes(file), theirs);

    // "Überschreiben".
    dialogs.choose_nodefault = 0;
    w.action("mnuexportitem(0)")->trigger();
    EXPECT_NE(readBytes(file), theirs);
}

// A world whose database can't say whether the file changed asks too, and
// says why; it doesn't take the file for unchanged.
TEST_F(Trust, AWorldThatCannotTellAsksBeforeOverwriting)
{
    openwindow();
    MainWindow &w = *window;
    dialogs.file = dir.file("wa.res");
    w.action("mnuexportitem(1)")->trigger();
    const QByteArray theirs = readBytes(dialogs.file) + "x";
    writeBytes(dialogs.file, theirs);
    w.db()->exec("DROP TABLE spieldateien");
    dialogs.asked.clear();
    dialogs.choose_nodefault = 2; // Abbrechen
    w.action("mnuexportitem(1)")->trigger();
    ASSERT_EQ(dialogs.asked.size(), 2) << dialogs.asked.join('\n').toStdString(); // the file, then the question
    const QString question = dialogs.asked.last();
    EXPECT_TRUE(question.startsWith("Wappen|Ob die Datei " + QDir::toNativeSeparators(dialogs.file) + " seit "))
        << question.toStdString();
    EXPECT_TRUE(question.contains("Tabelle")) << "the database's failure is named: " << question.toStdString();
    EXPECT_TRUE(question.endsWith("|Überschreiben/Erst vergleichen/Abbrechen|ohne Vorgabe")) << question.toStdString();
    EXPECT_EQ(readBytes(dialogs.file), theirs);
}

TEST_F(Trust, TheQuestionHasNoDefaultButton)
{
    Dialogs real;
    QAbstractButton *enterPresses = nullptr;
    QStringList buttons;
    whenModal([&](QDialog *d) {
        auto *box = qobject_cast<QMessageBox *>(d);
        ASSERT_NE(box, nullptr);
        enterPresses = box->defaultButton();
        for (QAbstractButton *b : box->buttons()) {
            buttons << b->text();
            EXPECT_FALSE(qobject_cast<QPushButton *>(b)->isDefault()) << (b->text()).toStdString();
        }
        box->escapeButton()->click();
    });
    const int answer = real.choosenodefault(nullptr, "Export", "Frage", {"Überschreiben", "Erst vergleichen", "Abbrechen"});
    EXPECT_EQ(enterPresses, nullptr);
    EXPECT_EQ(answer, 2);
    EXPECT_EQ(buttons.size(), 3);
}

TEST_F(Trust, CrestFromPictureOnTheKitColoursSetsTheClubInOneStep)
{
    openwindow(true);
    MainWindow &w = *window;
    dialogs.file = example("1_tm.cfg");
    dialogs.filter = 0;
    w.action("mnuimportitem(0)")->trigger();
    zorbo::test::clickNode(child<QTreeWidget>(w, "tvdb"), "T11");
    const qsizetype steps = w.world()->history().size();
    zorbo::test::TempFolder pictures;
    // Left half blue, right half transparent.
    QImage picture(60, 30, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter(&picture).fillRect(0, 0, 30, 30, QColor(0, 0, 255));
    ASSERT_TRUE(picture.save(pictures.file("wappen.png")));
    const QString kit = w.db()->scalar("SELECT F_TRIKOT_SPIELER FROM vereine WHERE NUMMER = 11").toString();

    QImage preview;
    whenModal(
        [&](QDialog *d) {
            auto *crests = qobject_cast<CrestPictureWindow *>(d);
            ASSERT_NE(crests, nullptr);
            EXPECT_EQ(child<QSpinBox>(*d, "txtwappennr")->value(), 111);
            EXPECT_TRUE(child<QCheckBox>(*d, "chkverein")->isChecked());
            ASSERT_TRUE(crests->setpicture(pictures.file("wappen.png")));
            EXPECT_EQ(crests->crest().size(), QSize(64, 32));
            // Transparent parts show the home kit when asked to.
            child<QComboBox>(*d, "cbohintergrund")->setCurrentIndex(1);
            child<QSpinBox>(*d, "txtwappennr")->setValue(700);
            preview = child<QLabel>(*d, "picvorschau")->pixmap().toImage();
            screenshot(d, "frmwappenbild.png");
            QTest::mouseClick(child<QPushButton>(*d, "btnschreiben"), Qt::LeftButton);
        },
        "frmwappenbild");
    w.action("mnutoolitem(10)")->trigger();

    // The preview: the home kit's colour around and behind the crest.
    const QStringList rgb = kit.split(',');
    ASSERT_EQ(rgb.size(), 3) << (kit).toStdString();
    const QColor home(rgb[0].trimmed().toInt(), rgb[1].trimmed().toInt(), rgb[2].trimmed().toInt());
    ASSERT_FALSE(preview.isNull());
    EXPECT_EQ(QColor(preview.pixel(5, 5)).rgb() & 0xF8FCF8, home.rgb() & 0xF8FCF8);
    EXPECT_EQ(QColor(preview.pixel(20, 40)).blue(), 255);

    // The file and the club's crest number, in one step that names the file.
    TgaImage tga;
    ASSERT_TRUE(readtga(crestfile(w.settings().folder(WappenFolder), 700), tga).ok);
    EXPECT_EQ(QSize(tga.width, tga.height), QSize(64, 32));
    EXPECT_EQ(w.db()->scalar("SELECT GRAFIK_NR FROM vereine WHERE NUMMER = 11").toInt(), 700);
    const QList<HistoryStep> history = w.world()->history();
    ASSERT_EQ(history.size(), steps + 1);
    EXPECT_TRUE(history.last().text.contains("vereins_wappen_700.tga")) << (history.last().text).toStdString();

    // A folder of pictures named by club: a list of what became of each.
    ASSERT_TRUE(picture.save(pictures.file("10.png")));
    ASSERT_TRUE(picture.save(pictures.file("Niemand.png")));
    QStringList lines;
    whenModal(
        [&](QDialog *d) {
            qobject_cast<CrestPictureWindow *>(d)->convertfolder(pictures.path());
            auto *list = child<QListWidget>(*d, "lstergebnis");
            for (int i = 0; i < list->count(); ++i)
                lines << list->item(i)->text();
        },
        "frmwappenbild");
    w.action("mnutoolitem(10)")->trigger();
    EXPECT_EQ(lines.size(), 4) << (lines.join('\n')).toStdString();
    EXPECT_TRUE(lines.contains("Niemand.png: kein Verein mit dieser Nummer oder diesem Namen")) << (lines.join('\n')).toStdString();
    EXPECT_TRUE(lines.first().startsWith("10.png: Wappen ")) << lines.first().toStdString();
    EXPECT_EQ(lines.last(), "1 von 3 Bildern als Wappen geschrieben."); // wappen.png names no club
}
