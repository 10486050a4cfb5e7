#include "core/schema.h"
#include "editor/kitart.h"
#include "core/kitcolours.h"
#include "core/kitfigure.h"
#include "editor/provisional.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

using namespace zorbo;

TEST(KitArt, ColourTextsReadWhateverTheirQuotesAndBlanks)
{
    EXPECT_EQ(parsekitcolour("  0,  0,  0"), (Rgb{0, 0, 0}));
    EXPECT_EQ(parsekitcolour(" 48, 48, 48"), (Rgb{48, 48, 48}));
    EXPECT_EQ(parsekitcolour("\"255, 12,  7\""), (Rgb{255, 12, 7}));
    EXPECT_EQ(parsekitcolour("\" 1\",\"2 \",  3  "), (Rgb{1, 2, 3}));
    EXPECT_EQ(parsekitcolour("12,,x"), (Rgb{12, 0, 0}));
    EXPECT_EQ(parsekitcolour(""), (Rgb{0, 0, 0}));
    EXPECT_EQ(parsekitcolour("300,-4,9"), (Rgb{255, 0, 9}));
    EXPECT_EQ(kitcolourtext({48, 5, 255}), " 48,  5,255");
    EXPECT_EQ(parsekitcolour(kitcolourtext({9, 99, 199})), (Rgb{9, 99, 199}));
}

TEST(KitArt, FigureStaysRightOfThePicture)
{
    for (const KitShape &s : kitfigure()) {
        EXPECT_GE(s.left, KitPictureLeft + KitPictureWidth) << s.name << s.index;
        EXPECT_TRUE(s.colour >= 0 && s.colour < 4) << s.name << s.index;
    }
    EXPECT_EQ(twipstopixels(975), 65);
    EXPECT_EQ(twipstopixels(1125), 75);
}

namespace {

class KitWorld : public ::testing::Test {
protected:
    void SetUp() override
    {
        db().exec("DELETE FROM e_trikotfarbeoriginal; DELETE FROM e_trikotfarbezorbode");
        db().run("INSERT INTO e_trikotfarbeoriginal VALUES (4, '\"255,  0,  0\"', '  0,  0,  0', '255,255,255', ' 48, 48, 48')");
        db().run("INSERT INTO e_trikotfarbezorbode VALUES (4, '  0,  0,255', '  1,  1,  1', '  2,  2,  2', '  3,  3,  3')");
        db().run("INSERT INTO vereine (NUMMER, NAME, NATION, TRIKOT_ART, AUSWEICH_TRIKOT_ART, TW_TRIKOT_ART) "
                 "VALUES (20, 'Rapid', 'Österreich', 4, 4, 5)");
    }
    Database &db() { return world.db(); }
    zorbo::test::NewWorld world;
};

} // namespace

TEST_F(KitWorld, ColoursFollowTheKitSetAfterASwitch)
{
    settrikotfarbe(db(), 20, TeamTable::Vereine, 0);
    auto home = readkitslot(db(), 20, TeamTable::Vereine, 0);
    ASSERT_TRUE(home);
    EXPECT_EQ(home->art, 4);
    EXPECT_EQ(home->colours[0], (Rgb{255, 0, 0}));
    EXPECT_EQ(home->colours[3], (Rgb{48, 48, 48}));

    settrikotfarbe(db(), 20, TeamTable::Vereine, 1);
    home = readkitslot(db(), 20, TeamTable::Vereine, 0);
    const auto away = readkitslot(db(), 20, TeamTable::Vereine, 1);
    ASSERT_TRUE(home && away);
    EXPECT_EQ(home->colours[0], (Rgb{0, 0, 255}));
    EXPECT_EQ(away->colours, home->colours);
    // Art 5 has no row in either table: the keeper's colours stay empty.
    EXPECT_EQ(readkitslot(db(), 20, TeamTable::Vereine, 2)->colours[0], (Rgb{0, 0, 0}));
    EXPECT_FALSE(readartcolours(db(), 1, 5));
    EXPECT_EQ((*readartcolours(db(), 1, 4))[0], (Rgb{0, 0, 255}));
    EXPECT_FALSE(readkitslot(db(), 99, TeamTable::Vereine, 0));
}

TEST_F(KitWorld, ProvisionalNumbersStepPastUnsavedEntries)
{
    EXPECT_EQ(provisionalnumber(db(), {"Asien", "L20"}), 21);
    EXPECT_EQ(provisionalnumber(db(), {"T21_", "L20"}), 22);
    EXPECT_EQ(provisionalnumber(db(), {"T21_", "L22_", "T5_"}), 23);
}
