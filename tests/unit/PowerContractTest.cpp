#include "support/PowerContract.h"
#include "support/FakePower.h"

namespace {

struct FakePowerBench {
    FakePower power;
    bool IsKeptAwake() const { return power.awakeHolds > 0; }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, PowerContract, FakePowerBench);

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
