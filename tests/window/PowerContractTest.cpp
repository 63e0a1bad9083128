#include "platform/windows/WindowsPower.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

bool IsKeptAwake() {
    // Only a call that sets the state tells what it was.
    const EXECUTION_STATE state = SetThreadExecutionState(ES_CONTINUOUS);
    SetThreadExecutionState(state | ES_CONTINUOUS);
    return (state & ES_SYSTEM_REQUIRED) != 0;
}

TEST(WindowsPower, KeepsTheComputerAwakeAsLongAsTheHoldLives) {
    WindowsPower power;
    auto hold = power.KeepAwake();
    EXPECT_TRUE(IsKeptAwake());
    hold.reset();
    EXPECT_FALSE(IsKeptAwake());
}

} // namespace
