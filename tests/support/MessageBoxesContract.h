#pragma once

#include "platform/MessageBoxes.h"

#include <gtest/gtest.h>

/// What every implementation of MessageBoxes does: run against the stand-in with the unit tests and against the real
/// one with the window tests. A bench offers `boxes` and `Press`, which has the next box answered with a button; `text`
/// and `title` are what that box showed.
template<typename Bench>
class MessageBoxesContract : public testing::Test {
  protected:
    int Answer(int button, std::uint32_t style) {
        bench_.Press(button);
        const int answer = boxes_.Show(L"Première ligne.\nSeconde ligne.", L"Titre é", style);
        EXPECT_EQ(bench_.text, L"Première ligne.\nSeconde ligne.");
        EXPECT_EQ(bench_.title, L"Titre é");
        return answer;
    }
    Bench bench_;
    MessageBoxes& boxes_ = bench_.boxes;
};

TYPED_TEST_SUITE_P(MessageBoxesContract);

TYPED_TEST_P(MessageBoxesContract, TheAnswerIsTheButtonThatWasPressed) {
    EXPECT_EQ(this->Answer(box::AnswerYes, box::YesNo | box::Question), box::AnswerYes);
    EXPECT_EQ(this->Answer(box::AnswerNo, box::YesNo | box::Information | box::DefaultButton2), box::AnswerNo);
}

TYPED_TEST_P(MessageBoxesContract, ABoxThatOnlyTellsGivesOk) {
    for (const std::uint32_t icon : {box::Ok, box::Critical, box::Exclamation, box::Information})
        EXPECT_EQ(this->Answer(1, icon), 1);
}

REGISTER_TYPED_TEST_SUITE_P(MessageBoxesContract, TheAnswerIsTheButtonThatWasPressed, ABoxThatOnlyTellsGivesOk);
