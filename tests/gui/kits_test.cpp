#include "core/defaultfolders.h"
#include "app/mainwindow.h"
#include "editor/kitart.h"
#include "core/kitcolours.h"
#include "editor/ui/kitgridmodel.h"
#include "editor/ui/kitpicker.h"
#include "editor/ui/kitpreview.h"
#include "guisupport.h"
#include "resources/tga.h"
#include "resources/ui/crestgridmodel.h"
#include "resources/ui/crestpicker.h"
#include "core/ui/crestview.h"
#include "support/testsupport.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <gtest/gtest.h>
#include <functional>

using namespace zorbo;
using zorbo::test::whenModal;

namespace {

// A crest of one colour in the editor's own TGA form.
QByteArray plaincrest(int pixel565)
{
    QByteArray pixels;
    for (int i = 0; i < 20 * 20; ++i)
        pixels.append(char(pixel565 & 0xFF)).append(char(pixel565 >> 8));
    return writetga(20, 20, pixels, 2);
}

// A kit drawing of one colour; the picture reader goes by content, not name.
void writedrawing(const QString &file, QColor colour)
{
    QImage image(61, 71, QImage::Format_RGB32);
    image.fill(colour);
    ASSERT_TRUE(image.save(file, "PNG"));
}

// A shirt of our own for the pictures of the README: body, sleeves and a
// stripe in a second colour.
void writeshirt(const QString &file, int art)
{
    QImage image(61, 71, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(QColor::fromHsv((art * 37) % 360, 180, 220));
    const QPointF shirt[] = {{18, 6}, {43, 6}, {58, 18}, {50, 28}, {45, 24}, {45, 64}, {16, 64}, {16, 24}, {11, 28}, {3, 18}};
    p.drawPolygon(shirt, 10);
    p.setBrush(art % 2 ? QColor(Qt::white) : QColor::fromHsv((art * 37 + 180) % 360, 200, 160));
    p.drawRect(art % 3 ? QRectF(27, 6, 7, 58) : QRectF(16, 30, 29, 8));
    p.end();
    ASSERT_TRUE(image.save(file, "PNG"));
}

class Kits : public zorbo::test::WindowTest {
protected:
    void SetUp() override
    {
        {
            OpenedDb o = opendb(dir.file("zorbo.mdb"));
            Database &db = *o.db;
            db.run("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES (10, 'Deutschland', "
                   "'Deutschland', 'West-Europa')");
            db.run("INSERT INTO vereine (NUMMER, NAME, NATION, GRAFIK_NR, TRIKOT_ART, AUSWEICH_TRIKOT_ART, TW_TRIKOT_ART, "
                   "F_TRIKOT_SPIELER) VALUES (20, 'FC Köln', 'Deutschland', 12, 4, 4, 70, '\"200, 10, 10\"')");
            db.exec("DELETE FROM e_trikotfarbeoriginal; DELETE FROM e_trikotfarbezorbode");
            db.run("INSERT INTO e_trikotfarbeoriginal VALUES (9, '  0,128,  0', '  1,  1,  1', '  2,  2,  2', '  3,  3,  3')");
            db.run("INSERT INTO e_trikotfarbezorbode VALUES (9, '  0,  0,128', '  1,  1,  1', '  2,  2,  2', '  3,  3,  3')");
        }
        for (const char *sub : {"trikot/original", "trikot/zorbode", "wappen"})
            QDir().mkpath(dir.file(sub));
        writedrawing(dir.file("trikot/original/trikot_04.gif"), Qt::red);
        writedrawing(dir.file("trikot/original/trikot_09.gif"), Qt::green);
        writedrawing(dir.file("trikot/zorbode/trikot_09.gif"), Qt::blue);
        ASSERT_TRUE(zorbo::test::writeBytes(dir.file("wappen/default.tga"), plaincrest(0)));
        ASSERT_TRUE(zorbo::test::writeBytes(dir.file("wappen/vereins_wappen_12.tga"), plaincrest(0xF800)));
        ASSERT_TRUE(zorbo::test::writeBytes(dir.file("wappen/vereins_wappen_5.tga"), plaincrest(0x07E0)));

        openwindow(true);
        tree = window->findChild<QTreeWidget *>("tvdb");
        select("T20");
    }
    void select(const QString &key) { zorbo::test::clickNode(tree, key); }
    KitPreview *preview(int slot) { return window->findChild<KitPreview *>(QStringLiteral("kitpreview(%1)").arg(slot)); }
    int art(int slot) { return preview(slot)->art(); }
    // Opens the kit picker on a slot by a double click and picks art, or cancels with -1.
    void pickKit(int slot, int pick)
    {
        whenModal([this, pick](QDialog *) {
            KitPicker *picker = window->editor()->kitpicker();
            ASSERT_NE(picker, nullptr);
            if (pick >= 0)
                picker->flxgrdtrikot_Click(picker->model()->index(pick / 12, pick % 12));
            picker->findChild<QPushButton *>(pick >= 0 ? "btnok" : "btnabbrechen")->click();
        });
        QTest::mouseDClick(preview(slot)->picture(), Qt::LeftButton);
    }
    QVariant value(const QString &sql) { return window->db()->scalar(sql); }
    QString grafnr() { return window->findChild<QLineEdit *>("txtgrafnr")->text(); }

    QTreeWidget *tree = nullptr;
};

} // namespace

TEST_F(Kits, ClubShowsItsKitsAndCrest)
{
    // Delivered drawings, if any, came with the start; this one must be missing.
    QFile::remove(dir.file("trikot/original/trikot_70.gif"));
    select("T20");
    EXPECT_EQ(art(0), 4);
    EXPECT_EQ(art(2), 70);
    EXPECT_FALSE(preview(0)->picture()->pixmap().isNull());
    EXPECT_TRUE(preview(2)->picture()->pixmap().isNull()) << "a missing drawing shows nothing";
    auto *crest = window->findChild<CrestView *>("ImgXwappen");
    ASSERT_FALSE(crest->image().isNull());
    EXPECT_EQ(crest->image().pixelColor(3, 3), QColor(255, 0, 0));

    const QString shot = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR");
    if (shot.isEmpty())
        return;
    // The delivered drawings where there are any, drawings of the test's own otherwise.
    for (int art = 0; art < 80; ++art)
        QFile::remove(kitartfile(window->settings().kitFolder(), art));
    unpackdefaults(window->settings());
    for (int art = 0; art < 80; ++art) {
        if (!QFileInfo::exists(kitartfile(window->settings().kitFolder(), art)))
            writeshirt(kitartfile(window->settings().kitFolder(), art), art);
    }
    for (int n = 0; n < 40; ++n)
        zorbo::test::writeBytes(dir.file(QStringLiteral("wappen/vereins_wappen_%1.tga").arg(n)),
                                plaincrest(((n * 5) % 32) * 2048 | ((n * 23) % 64) * 32 | (31 - n % 32)));
    window->db()->run("UPDATE e_trikotfarbeoriginal SET Trikot1 = '200, 30, 30', Trikot2 = '255,255,255', "
                      "Hose = ' 20, 20, 20', Streifen = '255,255,255' WHERE Nummer = 9");
    window->db()->run("INSERT INTO e_trikotfarbeoriginal VALUES (70, ' 30,160, 40', ' 30,160, 40', ' 20, 20, 20', "
                      "'240,240,  0')");
    window->db()->run("INSERT INTO e_trikotfarbeoriginal VALUES (4, '255,255,255', ' 40, 40,200', ' 40, 40,200', "
                      "'255,255,255')");
    window->db()->run("UPDATE vereine SET TRIKOT_ART = 4, AUSWEICH_TRIKOT_ART = 9, GRAFIK_NR = 17 WHERE NUMMER = 20");
    settrikotfarbe(*window->db(), 20, TeamTable::Vereine, 0);
    select("T20");
    window->findChild<QWidget *>("tabteam")->grab().save(shot + "/teamtab-kits.png");
    whenModal([this, shot](QDialog *) {
        window->editor()->kitpicker()->flxgrdtrikot_Click(window->editor()->kitpicker()->model()->index(1, 2));
        window->editor()->kitpicker()->grab().save(shot + "/kitpicker.png");
    });
    QTest::mouseDClick(preview(0)->picture(), Qt::LeftButton);
    whenModal([this, shot](QDialog *) {
        window->findChild<CrestPicker *>()->flxgrdwappen_Click(window->findChild<CrestPicker *>()->model()->index(1, 6));
        window->findChild<CrestPicker *>()->grab().save(shot + "/crestpicker.png");
    });
    QTest::mouseClick(crest, Qt::LeftButton);
}

TEST_F(Kits, PickedKitReachesTheDatabaseOnlyWithTheSave)
{
    pickKit(0, 9);
    EXPECT_EQ(art(0), 9);
    EXPECT_EQ(preview(0)->colours()[0], (Rgb{0, 128, 0}));
    pickKit(1, -1);
    EXPECT_EQ(art(1), 4) << "Abbrechen changes nothing";

    // Leaving the club asks about the picked kit; Verwerfen drops it.
    dialogs.choice = 1;
    select("L10");
    EXPECT_EQ(dialogs.asked.filter("Änderungen speichern?").size(), 1);
    select("T20");
    EXPECT_EQ(art(0), 4);
    EXPECT_EQ(value("SELECT TRIKOT_ART FROM vereine WHERE NUMMER = 20").toInt(), 4);
    EXPECT_EQ(value("SELECT F_TRIKOT_SPIELER FROM vereine WHERE NUMMER = 20").toString(), "\"200, 10, 10\"");

    pickKit(1, 9);
    window->editor()->btnteamsave_Click();
    EXPECT_EQ(value("SELECT AUSWEICH_TRIKOT_ART FROM vereine WHERE NUMMER = 20").toInt(), 9);
    EXPECT_EQ(value("SELECT TRIKOT_ART FROM vereine WHERE NUMMER = 20").toInt(), 4);
}

TEST_F(Kits, KitSetSwitchMarksBothPlacesAndRenewsThePicker)
{
    pickKit(0, -1);
    QPointer<KitPicker> first = window->editor()->kitpicker();
    ASSERT_TRUE(first);
    window->action("trikotzorbode")->trigger();
    EXPECT_TRUE(window->action("mnuoptionenitem(1)")->isChecked() && !window->action("trikotoriginal")->isChecked());
    EXPECT_EQ(loadsettings(dir.path()).trikotsatz, 1);
    EXPECT_TRUE(first.isNull()) << "the old set's picker is gone";
    EXPECT_EQ(art(0), 4) << "kits on screen stay until the next club";

    pickKit(0, 9);
    EXPECT_EQ(preview(0)->picture()->pixmap().toImage().pixelColor(30, 30), QColor(Qt::blue));
    window->editor()->btnteamsave_Click();
    EXPECT_EQ(value("SELECT F_TRIKOT_SPIELER FROM vereine WHERE NUMMER = 20").toString(), "  0,  0,128");

    window.reset();
    openwindow();
    EXPECT_TRUE(window->action("trikotzorbode")->isChecked()) << "the next start marks the stored set";
}

TEST_F(Kits, CopyOfMaResNeedsAnInstalledGame)
{
    ASSERT_TRUE(zorbo::test::writeBytes(dir.file("trikot/original/ma.res"), "set0"));
    window->action("mnuoptionenitem(2)")->trigger();
    EXPECT_EQ(dialogs.asked.size(), 1);
    const QString target = window->settings().folder(ZorboresFolder) + "ma.res";
    ASSERT_TRUE(zorbo::test::writeBytes(target, "game"));
    window->action("mnuoptionenitem(2)")->trigger();
    EXPECT_EQ(dialogs.asked.size(), 1);
    EXPECT_EQ(zorbo::test::readBytes(target), "set0");
}

TEST_F(Kits, CrestPickerLastCellDoesNothingAndCancelKeepsTheNumber)
{
    auto *crest = window->findChild<CrestView *>("ImgXwappen");
    whenModal([](QDialog *d) {
        auto *picker = qobject_cast<CrestPicker *>(d);
        ASSERT_NE(picker, nullptr);
        EXPECT_EQ(picker->wappennr(), "12");
        picker->flxgrdwappen_Click(picker->model()->index(90, 10));
        EXPECT_EQ(picker->wappennr(), "12");
        picker->flxgrdwappen_Click(picker->model()->index(0, 5));
        EXPECT_EQ(picker->wappennr(), "5");
        picker->findChild<QPushButton *>("btnabbrechen")->click();
    });
    QTest::mouseClick(crest, Qt::LeftButton);
    EXPECT_EQ(grafnr(), "12");
    EXPECT_EQ(crest->image().pixelColor(3, 3), QColor(255, 0, 0));

    whenModal([](QDialog *d) {
        auto *picker = qobject_cast<CrestPicker *>(d);
        ASSERT_NE(picker, nullptr);
        picker->flxgrdwappen_Click(picker->model()->index(0, 5));
        picker->findChild<QPushButton *>("btnok")->click();
    });
    QTest::mouseClick(crest, Qt::LeftButton);
    EXPECT_EQ(grafnr(), "5");
    EXPECT_EQ(crest->image().pixelColor(3, 3), QColor(0, 255, 0));
    window->editor()->btnteamsave_Click();
    EXPECT_EQ(value("SELECT GRAFIK_NR FROM vereine WHERE NUMMER = 20").toInt(), 5);
}

TEST_F(Kits, NewCountryAndClubLiveAsProvisionalNodesUntilSaved)
{
    // The provisional numbers are the editor library's test.
    auto openNew = [this](int option, const QString &pick, bool take) {
        whenModal([=](QDialog *dialog) {
            dialog->findChild<QRadioButton *>(QStringLiteral("optnew(%1)").arg(option))->click();
            dialog->findChild<QComboBox *>(option == 0 ? "cbokontinent" : "cboland")->setCurrentText(pick);
            dialog->findChild<QPushButton *>(take ? "btnok" : "btnabbrechen")->click();
        });
        window->action("new")->trigger();
    };
    openNew(1, "Deutschland", false);
    EXPECT_EQ(tree->currentItem()->data(0, Qt::UserRole).toString(), "T20") << "Abbrechen adds nothing";

    openNew(0, "Asien", true);
    QTreeWidgetItem *land = tree->currentItem();
    EXPECT_EQ(land->data(0, Qt::UserRole).toString(), "L21_");
    EXPECT_EQ(land->parent()->data(0, Qt::UserRole).toString(), "Asien");

    openNew(1, "Deutschland", true);
    EXPECT_EQ(tree->currentItem()->data(0, Qt::UserRole).toString(), "T22_");
    EXPECT_EQ(tree->currentItem()->parent()->text(0), "Deutschland");

    window->findChild<QLineEdit *>("txtteamlang")->setText("SV Neustadt");
    window->editor()->btnteamsave_Click();
    EXPECT_EQ(value("SELECT NAME FROM vereine WHERE NUMMER = 22").toString(), "SV Neustadt");
    EXPECT_EQ(value("SELECT count(*) FROM vereinspieler WHERE verein = 22").toInt(), 20);
    EXPECT_EQ(tree->currentItem()->data(0, Qt::UserRole).toString(), "T22");
    EXPECT_EQ(value("SELECT count(*) FROM vereine_national WHERE NUMMER = 21").toInt(), 0) << "the country was never saved";
    EXPECT_NE(zorbo::test::node(tree, "L21_"), nullptr) << "and stays in the tree when the save builds it anew";
}
