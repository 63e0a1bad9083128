#pragma once

#include "platform/Power.h"

#include <gtest/gtest.h>

/// What every implementation of Power does: run against the stand-in with the unit tests and against the real one with
/// the window tests. A bench offers `power` and `IsKeptAwake`, which asks the computer.
template<typename Bench>
class PowerContract : public testing::Test {
  protected:
    Bench bench_;
    Power& power_ = bench_.power;
};

TYPED_TEST_SUITE_P(PowerContract);

TYPED_TEST_P(PowerContract, TheComputerIsKeptAwakeAsLongAsTheHoldLives) {
    EXPECT_FALSE(this->bench_.IsKeptAwake());
    auto hold = this->power_.KeepAwake();
    EXPECT_TRUE(this->bench_.IsKeptAwake());
    hold.reset();
    EXPECT_FALSE(this->bench_.IsKeptAwake());
}

TYPED_TEST_P(PowerContract, AHoldThatHasEndedMayBeFollowedByAnother) {
    for (int i = 0; i < 2; ++i) {
        const auto hold = this->power_.KeepAwake();
        EXPECT_TRUE(this->bench_.IsKeptAwake());
    }
    EXPECT_FALSE(this->bench_.IsKeptAwake());
}

REGISTER_TYPED_TEST_SUITE_P(PowerContract, TheComputerIsKeptAwakeAsLongAsTheHoldLives,
                            AHoldThatHasEndedMayBeFollowedByAnother);
