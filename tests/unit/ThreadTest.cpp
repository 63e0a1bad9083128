#include "platform/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>

namespace {

template<typename Condition>
bool ComesTrue(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition() && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return condition();
}

TEST(ThreadTest, EveryOneOfManyThatAreStartedInTurnRunsItsSteps) {
    for (int i = 0; i < 2000; i++) {
        const auto hasRun = std::make_shared<std::atomic<bool>>(false);
        StartThread([hasRun] { *hasRun = true; });
        ASSERT_TRUE(ComesTrue([&] { return hasRun->load(); })) << "number " << i;
    }
}

TEST(ThreadTest, WhatTheStepsHoldGoesWhenTheyHaveEnded) {
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> seen = held;
    StartThread([held = std::move(held)] { std::this_thread::yield(); });
    EXPECT_TRUE(ComesTrue([&] { return seen.expired(); }));
}

} // namespace
