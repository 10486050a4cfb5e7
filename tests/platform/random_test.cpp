#include "platform/random.h"

#include <gtest/gtest.h>

using namespace zorbo;

TEST(Random, DrawsTheKnownSequenceFromTheStart)
{
    const double expected[] = {0.7055475, 0.533424, 0.5795186, 0.2895625, 0.301948,
                               0.7747401, 0.01401764, 0.7607236, 0.81449, 0.7090379};
    Rnd gen;
    for (double e : expected)
        EXPECT_NEAR(gen.next(), e, 1e-6);
    EXPECT_LT(gen.state(), 1u << 24);
    gen.restart();
    EXPECT_NEAR(gen.next(), expected[0], 1e-6);
}

TEST(Random, RndBelowTruncatesTheScaledValue)
{
    rnd().restart();
    // Whole parts of ten times the first ten values.
    const int expected[] = {7, 5, 5, 2, 3, 7, 0, 7, 8, 7};
    for (int e : expected)
        EXPECT_EQ(rndBelow(10), e);
    rnd().restart();
}
