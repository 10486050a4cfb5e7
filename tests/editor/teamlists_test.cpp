#include "core/schema.h"
#include "core/teamlists.h"
#include "support/testsupport.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

using namespace zorbo;

TEST(TeamLists, OneRebuildRefillsEveryListWithClubNumbersAsItemData)
{
    test::NewWorld o;
    o->run("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES (10, 'Schweiz', 'Helvetia', 'West-Europa')");
    o->run("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (20, 'FC Zürich', 'Schweiz'), (21, 'BSC Young Boys', 'Schweiz')");

    TeamLists lists;
    QAbstractItemModelTester tester(lists.vereine(), QAbstractItemModelTester::FailureReportingMode::Warning);
    lists.fill(load_dbteam(&o.db()));
    EXPECT_EQ(lists.laender()->stringList(), QStringList({"Schweiz", "Helvetia"}));
    EXPECT_EQ(lists.spielerlaender()->stringList(), QStringList({"TRANSFERMARKT", "Schweiz", "Helvetia"}));
    ASSERT_EQ(lists.vereine()->rowCount(), 2);
    const QModelIndex first = lists.vereine()->index(0);
    EXPECT_EQ(first.data().toString(), "BSC Young Boys (Helvetia)");
    EXPECT_EQ(first.data(Qt::UserRole).toLongLong(), 21);

    o->run("DELETE FROM vereine WHERE NUMMER = 21");
    lists.fill(load_dbteam(&o.db()));
    ASSERT_EQ(lists.vereine()->rowCount(), 1);
    EXPECT_EQ(lists.vereine()->index(0).data(Qt::UserRole).toLongLong(), 20);
}

namespace {

// Gives an alignment that no alignment is.
class BrokenModel : public QAbstractListModel {
public:
    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : 2; }
    QVariant data(const QModelIndex &, int role) const override
    {
        return role == Qt::TextAlignmentRole ? QVariant::fromValue(Qt::Alignment::fromInt(0x10000)) : QVariant();
    }
};

} // namespace

TEST(ModelTester, AComplaintFailsTheTest)
{
    BrokenModel model;
    EXPECT_NONFATAL_FAILURE(QAbstractItemModelTester(&model, QAbstractItemModelTester::FailureReportingMode::Warning),
                            "QAbstractItemModelTester");
}
