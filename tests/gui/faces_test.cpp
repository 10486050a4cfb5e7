#include "core/schema.h"
#include "app/mainwindow.h"
#include "editor/facecode.h"
#include "editor/facepictures.h"
#include "core/generator.h"
#include "editor/playergrid.h"
#include "editor/ui/facedialog.h"
#include "editor/ui/faceview.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QApplication>
#include <QPixmapCache>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::child;

namespace {

const QString delivered = QStringLiteral(":/defaults/gesicht/");

QSlider *slider(QWidget &w, int part) { return child<QSlider>(w, QStringLiteral("sldgesicht(%1)").arg(part)); }
QPushButton *button(QWidget &w, const char *kind, int part)
{
    return child<QPushButton>(w, QStringLiteral("%1(%2)").arg(QLatin1String(kind)).arg(part));
}

class FaceWindow : public zorbo::test::WindowTest {
protected:
    void SetUp() override
    {
        {
            OpenedDb o = opendb(dir.path() + "/zorbo.mdb");
            o.db->run("INSERT INTO vereine_national (NUMMER, NAME, KURZNAME, GRAFIK_NR, NATION, KONTINENT, STADION_NAME, "
                      "STADT, STADION_SITZPL, STADION_STEHPL, TRIKOT_ART, TW_TRIKOT_ART, AUSWEICH_TRIKOT_ART) VALUES "
                      "(10, 'Deutschland', 'GER', 0, 'Deutschland', 'West-Europa', 'Stadion', 'Berlin', 1, 0, 1, 70, 3)");
            o.db->run("INSERT INTO vereine (NUMMER, NAME, KURZNAME, GRAFIK_NR, NATION, STADION_NAME, STADT, "
                      "STADION_SITZPL, STADION_STEHPL, TRIKOT_ART, TW_TRIKOT_ART, AUSWEICH_TRIKOT_ART) VALUES "
                      "(20, 'FC Köln', 'Köln', 12, 'Deutschland', 'Stadion', 'Köln', 4, 1, 4, 70, 0)");
            first = spieler20new(*o.db, 20, "Deutschland", 6);
            o.db->run("UPDATE spieler SET GESICHT = ?2, ERLERNT = '40,43,48', GESPERRT = '45' WHERE NUMMER = ?1", first,
                      encodeface({0, {2, 3, 4, 5, 6}}));
        }
        openwindow(true);
        zorbo::test::clickNode(child<QTreeWidget>(*window, "tvdb"), "T20");
        for (int r = 0; r < window->editor()->gridmodel()->rowCount(); ++r)
            if (window->editor()->gridmodel()->player(r).nummer == first)
                zorbo::test::clickGridRow(*window, r);
        face = child<FaceView>(*window, "picgesicht");
    }
    FaceView *face = nullptr;
    qint64 first = 0;
};

} // namespace

TEST_F(FaceWindow, ThePlayerTabStacksTheFaceAndTheDialogTakesOrLeavesIt)
{
    const qint64 code = encodeface({0, {2, 3, 4, 5, 6}});
    EXPECT_EQ(face->code(), code);
    EXPECT_FALSE(child<QLabel>(*window, "imggesicht(0)")->pixmap().isNull());

    zorbo::test::whenModal([](QDialog *dialog) {
        QDialog &d = *dialog;
        slider(d, Nase)->setValue(9);
        QTest::mouseClick(child<QPushButton>(d, "btnabbrechen"), Qt::LeftButton);
    });
    QTest::mouseDClick(face, Qt::LeftButton);
    EXPECT_EQ(face->code(), code) << "Abbrechen leaves the face as it was";

    zorbo::test::whenModal([](QDialog *dialog) {
        QDialog &d = *dialog;
        QTest::mouseClick(button(d, "btnplus", Mund), Qt::LeftButton);
        QTest::mouseClick(child<QPushButton>(d, "btnok"), Qt::LeftButton);
    });
    QTest::mouseDClick(face, Qt::LeftButton);
    const qint64 taken = encodeface({0, {2, 4, 4, 5, 6}});
    EXPECT_EQ(face->code(), taken);
    QTest::mouseClick(child<QPushButton>(*window, "btnspielerspeichern"), Qt::LeftButton);
    EXPECT_EQ(window->db()->scalar("SELECT GESICHT FROM spieler WHERE NUMMER = ?1", first).toLongLong(), taken);

    const QString shot = qEnvironmentVariable("ZORBO_SCREENSHOT_DIR");
    if (!shot.isEmpty()) {
        window->grab().save(shot + "/mainwindow-face-talents.png");
        FacePictures pics(delivered);
        FaceDialog d(pics, taken, {2, 4, 4, 5, 6});
        d.show();
        d.grab().save(shot + "/frmgesicht.png");
    }
}

TEST(FaceDialogAlone, ResetAndColourChangeFollowTheFilesOfTheColour)
{
    const FacePictures pics(delivered);
    FaceDialog d(pics, encodeface({0, {2, 3, 4, 5, 6}}), {2, 3, 4, 5, 6});
    slider(d, Nase)->setValue(30);
    EXPECT_FALSE(button(d, "btnplus", Nase)->isEnabled()) << "31 light noses";
    QTest::mouseClick(button(d, "btnminus", Nase), Qt::LeftButton);
    EXPECT_EQ(slider(d, Nase)->value(), 29);

    child<QRadioButton>(d, "opthautfarbe(1)")->click();
    EXPECT_EQ(slider(d, Augen)->maximum(), 1) << "two dark eye pictures";
    EXPECT_FALSE(slider(d, Kinn)->isEnabled()) << "one picture: the slider can't move";

    QTest::mouseClick(child<QPushButton>(d, "btnreset"), Qt::LeftButton);
    EXPECT_TRUE(child<QRadioButton>(d, "opthautfarbe(0)")->isChecked());
    EXPECT_EQ(slider(d, Nase)->value(), 2);
    EXPECT_EQ(slider(d, Kinn)->value(), 6);

    child<QRadioButton>(d, "opthautfarbe(1)")->click();
    slider(d, Haare)->setValue(8);
    QTest::mouseClick(child<QPushButton>(d, "btnok"), Qt::LeftButton);
    EXPECT_EQ(d.result(), QDialog::Accepted);
    EXPECT_EQ(d.code(), encodeface({1, {0, 0, 8, 0, 0}}));
}

TEST_F(FaceWindow, CheckallgesichterTellsTheCountAndAsksBeforeWriting)
{
    // Which codes are repaired, and how, is the editor library's test.
    const qint64 broken = encodeface({0, {40, 3, 4, 5, 6}});
    window->db()->run("UPDATE spieler SET GESICHT = ?2 WHERE NUMMER IN (?1, ?1 + 3)", first, broken);
    window->db()->run("UPDATE spieler SET GESICHT = ?2 WHERE NUMMER = ?1 + 4", first, encodeface({1, {0, 0, 0, 7, 0}}));
    const auto face = [&] { return window->db()->scalar("SELECT GESICHT FROM spieler WHERE NUMMER = ?1", first).toLongLong(); };
    window->action("mnutoolitem(1)")->trigger();
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(dialogs.asked.last().startsWith("Spielergesichter|3 Gesichter")) << dialogs.asked.last().toStdString();
    EXPECT_EQ(face(), broken) << "No writes nothing";

    dialogs.answer = true;
    window->action("mnutoolitem(1)")->trigger();
    ASSERT_EQ(dialogs.asked.size(), 3);
    EXPECT_EQ(dialogs.asked.last(), "Spielergesichter|3 Gesichter korrigiert!");
    EXPECT_NE(face(), broken);
}
