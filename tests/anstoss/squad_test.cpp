#include "anstoss/squadbuilder.h"
#include "support/qstringprint.h"

#include "anstossfixture.h"

using namespace zorbo;
using namespace zorbo::test;

namespace {

struct Squad : ClubWorld {
    AetFile file;
    SquadBuilder builder;

    void load(const QList<AetPlayer> &players)
    {
        ASSERT_TRUE(file.load(writeaet(files, "club.aet", aettext("Name=Neu\r\n", players))));
        builder.fill(db(), file, club);
    }
    std::array<int, 4> counts() const
    {
        std::array<int, 4> c{};
        for (const ListEntry &e : builder.squad())
            ++c[size_t(e.art)];
        return c;
    }
};

} // namespace

TEST_F(Squad, ListsFromFileAndClubWithKeysTextsAndDefaults)
{
    load({{"Müller", "Jörg", "1", "5000"}, {"Ohne", QString(), QString(), QString()}});
    const auto &imp = builder.list(SquadBuilder::Import);
    ASSERT_EQ(imp.size(), 2);
    EXPECT_EQ(imp[0].key, "I_0");
    EXPECT_EQ(imp[0].text, "J. Müller");
    EXPECT_TRUE(imp[0].staerke.startsWith("2") && imp[0].staerke.endsWith("5 Sterne"));
    // Missing keys: first name one blank, position 3, strength 0.
    EXPECT_EQ(imp[1].text, ". Ohne"); // the blank default is trimmed as every value
    EXPECT_EQ(imp[1].art, 3);
    const auto &ed = builder.list(SquadBuilder::Editor);
    ASSERT_EQ(ed.size(), 20);
    EXPECT_TRUE(ed[0].key.startsWith("E_"));
    for (int i = 1; i < ed.size(); ++i)
        EXPECT_LE(ed[i - 1].art, ed[i].art);
}

TEST_F(Squad, CopyStopsAtTwentyKeepsPositionOrderAndRemoveFreesTheSource)
{
    load(squadof({3, 8, 8, 8}));
    QList<int> all;
    for (int i = 0; i < 19; ++i)
        all << 26 - i; // strikers and midfielders first, in reverse
    EXPECT_EQ(builder.copy(SquadBuilder::Import, all).size(), 19);
    // With 19 in the list, a copy of everything takes one entry: the first not ghosted.
    const QList<int> one = builder.copy(SquadBuilder::Import, {0, 1, 2, 3});
    EXPECT_EQ(one, QList<int>({0}));
    EXPECT_TRUE(builder.full());
    for (int i = 1; i < builder.squad().size(); ++i)
        EXPECT_LE(builder.squad()[i - 1].art, builder.squad()[i].art);
    EXPECT_EQ(builder.squad()[0].key, "I_1"); // place 1 of the source list
    EXPECT_TRUE(builder.copy(SquadBuilder::Import, {1}).isEmpty());

    builder.remove({0});
    EXPECT_FALSE(builder.list(SquadBuilder::Import)[0].ghosted);
    EXPECT_EQ(builder.copy(SquadBuilder::Import, {0}), QList<int>({0}));
    EXPECT_EQ(builder.squad()[0].key, "I_1");
    // Ghosted entries can't be copied twice, from either list.
    EXPECT_TRUE(builder.copy(SquadBuilder::Import, {0}).isEmpty());
}

TEST_F(Squad, AutomaticChoiceTakesTheSystemsCountsOfTheStrongest)
{
    load(squadof({3, 8, 8, 8}));
    for (int system = 0; system < 10; ++system) {
        builder.fill(db(), file, club);
        builder.autochoose(system);
        EXPECT_EQ(counts(), squadsystems[size_t(system)]) << system;
        // The strongest of each position: squadof makes the first the strongest.
        EXPECT_TRUE(builder.squad()[0].text.endsWith("P0_0"));
        EXPECT_EQ(builder.entries().size(), 20);
    }
    rnd().restart();
    QSet<int> drawn;
    for (int i = 0; i < 300; ++i)
        drawn.insert(randomsystem());
    EXPECT_EQ(drawn.size(), 9);
    EXPECT_FALSE(drawn.contains(9));
}

TEST_F(Squad, AutomaticChoiceShortOfGoalkeepersAndWithEntriesGhostedBefore)
{
    load(squadof({0, 8, 8, 8}));
    builder.autochoose(0);
    EXPECT_EQ(counts(), (std::array<int, 4>{0, 6, 6, 6}));
    EXPECT_FALSE(builder.full());

    // A defender copied by hand still counts for the system: one fewer is added.
    load(squadof({2, 8, 8, 8}));
    builder.copy(SquadBuilder::Import, {2}); // the strongest defender
    builder.copy(SquadBuilder::Editor, {0});
    builder.autochoose(0);
    EXPECT_EQ(builder.squad().size(), 20);
    EXPECT_EQ(counts()[1], 6);
    // Entries chosen after the twentieth are only ghosted.
    int ghosted = 0;
    for (const ListEntry &e : builder.list(SquadBuilder::Import))
        ghosted += e.ghosted;
    EXPECT_EQ(ghosted, 20);
}
