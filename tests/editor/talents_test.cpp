#include "core/schema.h"
#include "editor/talentlist.h"
#include "editor/talentstates.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

using namespace zorbo;

TEST(TalentStates, ChangedListsComeBackAscendingWithoutBlanksAndLockedWinsOverLearned)
{
    TalentStates t = TalentStates::fromlists(QStringLiteral("12, 3,40 ,7"), QStringLiteral("5 ,3"));
    EXPECT_EQ(t.state(3), TalentStates::Locked) << "a talent in both lists ends up locked";
    EXPECT_EQ(t.state(12), TalentStates::Learned);
    EXPECT_EQ(t.state(0), TalentStates::None);
    QString erlernt, gesperrt;
    t.talentsum(erlernt, gesperrt);
    EXPECT_EQ(erlernt, "12, 3,40 ,7") << "unchanged lists stay as stored";
    EXPECT_EQ(gesperrt, "5 ,3");
    t.step(0);
    t.talentsum(erlernt, gesperrt);
    EXPECT_EQ(erlernt, "0,7,12,40");
    EXPECT_EQ(gesperrt, "3,5");
    t.step(0);
    t.step(0);
    t.talentsum(erlernt, gesperrt);
    EXPECT_EQ(erlernt, "12, 3,40 ,7") << "stepped back to where it was";

    TalentStates empty = TalentStates::fromlists(QString(), QStringLiteral(" , "));
    empty.step(0);
    empty.step(0);
    empty.talentsum(erlernt, gesperrt);
    EXPECT_EQ(erlernt, "");
    EXPECT_EQ(gesperrt, "0");
}

TEST(TalentStates, NumbersWithoutARowAreKeptAndReported)
{
    TalentStates t = TalentStates::fromlists(QStringLiteral("53,1,-4"), QStringLiteral("200,52"));
    EXPECT_EQ(t.unknown(), (QList<qint64>{-4, 53, 200}));
    t.step(1); // learned -> locked
    QString erlernt, gesperrt;
    t.talentsum(erlernt, gesperrt);
    EXPECT_EQ(erlernt, "-4,53");
    EXPECT_EQ(gesperrt, "1,52,200");
}

TEST(TalentStates, StepsNoneLearnedLockedNone)
{
    TalentStates t;
    EXPECT_EQ(t.step(9), TalentStates::Learned);
    EXPECT_EQ(t.step(9), TalentStates::Locked);
    EXPECT_EQ(t.step(9), TalentStates::None);
    EXPECT_EQ(t.step(99), TalentStates::Learned) << "a number without a row changes nothing stored";
    EXPECT_EQ(t.state(99), TalentStates::None);
}

TEST(TalentList, ReadsTheReferenceTableCountingFromZero)
{
    test::TempFolder dir;
    OpenedDb o = opendb(dir.file("zorbo.mdb"));
    ASSERT_TRUE(o.db);
    const QList<Talent> list = readtalents(*o.db);
    ASSERT_EQ(list.size(), TalentCount);
    // Flanken: voraus 9 (Passspiel), schutz 32 and 8 in the table's numbering.
    EXPECT_EQ(list[1].voraus, (std::array<int, 3>{8, -1, -1}));
    EXPECT_EQ(list[1].schutz, (std::array<int, 3>{31, 7, -1}));

    o.db->run("DELETE FROM e_attribute WHERE id > 10");
    EXPECT_EQ(readtalents(*o.db).size(), 10) << "a short table gives a short list";
}

TEST(TalentList, GroupsShownPerPosition)
{
    EXPECT_TRUE(talentshown(39, 1));
    EXPECT_FALSE(talentshown(39, 0));
    EXPECT_TRUE(talentshown(40, 0));
    EXPECT_TRUE(talentshown(46, 3));
    EXPECT_FALSE(talentshown(47, 2));
    EXPECT_TRUE(talentshown(47, 0));
}
