#pragma once

#include "platform/MessageLoop.h"

#include <gtest/gtest.h>

/// What every implementation of MessageLoop does: run against the stand-in with the unit tests and against the real one
/// with the window tests. A bench offers `loop` and `Post`, which leaves steps among the pending messages.
template<typename Bench>
class MessageLoopContract : public testing::Test {
  protected:
    Bench bench_;
    MessageLoop& loop_ = bench_.loop;
};

TYPED_TEST_SUITE_P(MessageLoopContract);

TYPED_TEST_P(MessageLoopContract, WithoutMessagesItReturns) {
    this->loop_.RunPending();
    SUCCEED();
}

TYPED_TEST_P(MessageLoopContract, WhatIsPendingIsHandledOnce) {
    int handled = 0;
    this->bench_.Post([&] { ++handled; });
    EXPECT_EQ(handled, 0);
    this->loop_.RunPending();
    this->loop_.RunPending();
    EXPECT_EQ(handled, 1);
}

TYPED_TEST_P(MessageLoopContract, AHandlerMayLetMessagesRunItself) {
    int handled = 0;
    this->bench_.Post([&] {
        this->loop_.RunPending();
        ++handled;
    });
    this->loop_.RunPending();
    EXPECT_EQ(handled, 1);
}

TYPED_TEST_P(MessageLoopContract, PaintingHandlesNothingElse) {
    int handled = 0;
    this->bench_.Post([&] { ++handled; });
    this->loop_.Paint();
    EXPECT_EQ(handled, 0);
    this->loop_.RunPending();
    EXPECT_EQ(handled, 1);
}

TYPED_TEST_P(MessageLoopContract, ThePointerMayBeSetTwice) {
    for (const Pointer pointer : {Pointer::Hourglass, Pointer::Hourglass, Pointer::Default, Pointer::Default})
        EXPECT_NO_THROW(this->loop_.SetPointer(pointer));
}

REGISTER_TYPED_TEST_SUITE_P(MessageLoopContract, WithoutMessagesItReturns, WhatIsPendingIsHandledOnce,
                            AHandlerMayLetMessagesRunItself, PaintingHandlesNothingElse, ThePointerMayBeSetTwice);
