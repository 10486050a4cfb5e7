#include "editor/ui/kitgridmodel.h"
#include "editor/ui/newentrydialog.h"
#include "resources/ui/crestgridmodel.h"
#include "support/testsupport.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QStringListModel>
#include <gtest/gtest.h>

using namespace zorbo;

// Every model tester complaint fails the test (see main_gui.cpp).
TEST(PickerModels, GridsHoldArtsAndCrestsOnlyWhereTheyBelong)
{
    zorbo::test::TempFolder dir;
    KitGridModel kits(dir.path() + "/");
    QAbstractItemModelTester kitTester(&kits, QAbstractItemModelTester::FailureReportingMode::Warning);
    EXPECT_EQ(kits.rowCount() * kits.columnCount(), 84);
    EXPECT_EQ(KitGridModel::art(kits.index(6, 7)), 79);
    EXPECT_EQ(KitGridModel::art(kits.index(6, 8)), -1);
    EXPECT_FALSE(kits.index(0, 3).data(Qt::DecorationRole).isValid()) << "a missing drawing shows nothing";

    CrestGridModel crests(dir.path() + "/");
    QAbstractItemModelTester crestTester(&crests, QAbstractItemModelTester::FailureReportingMode::Warning);
    EXPECT_EQ(crests.rowCount() * crests.columnCount(), 1001);
    EXPECT_EQ(CrestGridModel::crest(crests.index(90, 9)), 999);
    EXPECT_EQ(CrestGridModel::crest(crests.index(90, 10)), -1);
    EXPECT_EQ(crests.decoded(), 0) << "nothing is read before the view asks";
    crests.index(0, 1).data(Qt::DecorationRole);
    EXPECT_EQ(crests.decoded(), 1);
}

TEST(NewEntry, OptionsKeepTheirChoicesAndTheButtonFollowsTheList)
{
    QStringListModel laender;
    NewEntryDialog empty(&laender);
    EXPECT_EQ(empty.kind(), NewEntryDialog::Verein);
    EXPECT_FALSE(empty.findChild<QPushButton *>("btnok")->isEnabled()) << "no country to choose";
    empty.optnew_Click(NewEntryDialog::Land);
    EXPECT_EQ(empty.choice(), "Asien");
    EXPECT_TRUE(empty.findChild<QPushButton *>("btnok")->isEnabled());

    laender.setStringList({"Deutschland", "Österreich"});
    NewEntryDialog dialog(&laender);
    EXPECT_EQ(dialog.choice(), "Deutschland");
    dialog.findChild<QComboBox *>("cboland")->setCurrentIndex(1);
    dialog.findChild<QRadioButton *>("optnew(0)")->click();
    dialog.findChild<QComboBox *>("cbokontinent")->setCurrentText("Ozeanien");
    dialog.findChild<QRadioButton *>("optnew(1)")->click();
    EXPECT_EQ(dialog.choice(), "Österreich");
    dialog.optnew_Click(NewEntryDialog::Land);
    EXPECT_EQ(dialog.choice(), "Ozeanien");
}
