#include "ui/Timer.h"
#include "TestForm.h"
#include "WaitFor.h"
#include "ui/DelayedCall.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace {

class TimerTest : public testing::Test {
  protected:
    TimerTest() { form.Create(); }

    TestForm form;
    int runs = 0;
    ui::Timer timer{form, [this] { ++runs; }};
};

TEST_F(TimerTest, RunsAgainAndAgainUntilItIsStopped) {
    timer.Start(10);
    EXPECT_TRUE(timer.IsRunning());
    EXPECT_TRUE(WaitFor([&] { return runs >= 3; }));
    timer.Stop();
    EXPECT_FALSE(timer.IsRunning());
}

TEST_F(TimerTest, CountsOnlyOnAFormThatIsLoaded) {
    timer.Start(10);
    form.Unload();
    EXPECT_FALSE(timer.IsRunning());
    timer.Start(10);
    EXPECT_FALSE(timer.IsRunning());
    form.Create();
    timer.Start(10);
    EXPECT_TRUE(WaitFor([&] { return runs >= 1; }));
}

TEST_F(TimerTest, LeavesNothingBehindThatCouldRun) {
    int lateRuns = 0;
    auto owned = std::make_unique<ui::Timer>(form, [&] { ++lateRuns; });
    owned->Start(10);
    owned.reset();
    timer.Start(10);
    EXPECT_TRUE(WaitFor([&] { return runs >= 5; }));
    EXPECT_EQ(lateRuns, 0);
}

TEST_F(TimerTest, WhatItsStepsLetThroughGoesToTheForm) {
    ui::Timer throwing(form, [] { throw std::runtime_error("steps"); });
    throwing.Start(10);
    EXPECT_TRUE(WaitFor([&] { return form.unhandled > 0; }));
}

TEST_F(TimerTest, ADelayedCallComesOnceForSeveralRequests) {
    int calls = 0;
    ui::DelayedCall call(form, [&] { ++calls; });
    call.Request(10);
    call.Request(10);
    EXPECT_TRUE(WaitFor([&] { return calls > 0; }));
    timer.Start(10);
    EXPECT_TRUE(WaitFor([&] { return runs >= 5; }));
    EXPECT_EQ(calls, 1);
    call.Request(10);
    EXPECT_TRUE(WaitFor([&] { return calls == 2; }));
}

} // namespace
