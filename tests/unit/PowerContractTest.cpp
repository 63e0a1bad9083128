#include "support/FakePower.h"

#include <gtest/gtest.h>

TEST(FakePower, CountsHoldsThatLive) {
    FakePower power;
    {
        const auto hold = power.KeepAwake();
        EXPECT_EQ(power.awakeHolds, 1);
    }
    EXPECT_EQ(power.awakeHolds, 0);
    EXPECT_EQ(power.awakeHoldsTaken, 1);
}
