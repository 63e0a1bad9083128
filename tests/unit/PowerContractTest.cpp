// What every implementation of Power does; run against the stand-in, and under Windows against the real one too.
#include "support/FakePower.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsPower.h"
#endif

namespace {

#ifdef _WIN32
using Sides = testing::Types<FakePower, WindowsPower>;
#else
using Sides = testing::Types<FakePower>;
#endif

template<typename Side>
class PowerContract : public testing::Test {};

TYPED_TEST_SUITE(PowerContract, Sides);

TYPED_TEST(PowerContract, KeepAwakeGivesAHold) {
    TypeParam side;
    Power& power = side;
    EXPECT_NE(power.KeepAwake(), nullptr);
}

TEST(FakePower, CountsHoldsThatLive) {
    FakePower power;
    {
        const auto hold = power.KeepAwake();
        EXPECT_EQ(power.awakeHolds, 1);
    }
    EXPECT_EQ(power.awakeHolds, 0);
    EXPECT_EQ(power.awakeHoldsTaken, 1);
}

} // namespace
