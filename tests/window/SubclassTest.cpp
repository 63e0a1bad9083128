#include "ui/Subclass.h"
#include "TestForm.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

constexpr UINT Question = WM_APP + 100;

/// Answers the question, and passes everything else on.
ui::Subclass::Steps Answering(LRESULT answer) {
    return [answer](const ui::WindowMessage& message) { return message.id == Question ? answer : message.PassOn(); };
}

class SubclassTest : public testing::Test {
  protected:
    SubclassTest() { form.Create(); }
    LRESULT Ask() { return SendMessageW(form.testText.Handle(), Question, 0, 0); }

    TestForm form;
};

TEST_F(SubclassTest, SeesAMessageBeforeTheWindowAndPassesTheOthersOn) {
    ui::Subclass subclass;
    subclass.Attach(form.testText.Handle(), Answering(7));
    EXPECT_EQ(Ask(), 7);
    form.testText.SetText(L"passed on");
    EXPECT_EQ(form.testText.Text(), L"passed on");
}

TEST_F(SubclassTest, TwoBeforeOneWindowDoNotTakeEachOthersPlace) {
    ui::Subclass first;
    auto second = std::make_unique<ui::Subclass>();
    first.Attach(form.testText.Handle(), Answering(1));
    second->Attach(form.testText.Handle(), Answering(2));
    EXPECT_EQ(Ask(), 2);
    second.reset();
    EXPECT_EQ(Ask(), 1);
}

TEST_F(SubclassTest, MayGoBeforeItsWindow) {
    {
        ui::Subclass subclass;
        subclass.Attach(form.testText.Handle(), Answering(7));
    }
    EXPECT_EQ(Ask(), 0);
}

TEST_F(SubclassTest, MayGoAfterItsWindowAndStandBeforeTheNext) {
    ui::Subclass subclass;
    subclass.Attach(form.testText.Handle(), Answering(7));
    form.Unload();
    EXPECT_FALSE(subclass.IsAttached());
    form.Create();
    EXPECT_EQ(Ask(), 0);
    subclass.Attach(form.testText.Handle(), Answering(8));
    EXPECT_EQ(Ask(), 8);
}

TEST_F(SubclassTest, MayGoWhileItHandlesAMessage) {
    auto subclass = std::make_unique<ui::Subclass>();
    const auto word = std::make_shared<int>(3);
    subclass->Attach(form.testText.Handle(), [&subclass, word](const ui::WindowMessage& message) -> LRESULT {
        if (message.id != Question) return message.PassOn();
        subclass.reset();
        return *word;
    });
    EXPECT_EQ(Ask(), 3);
    EXPECT_EQ(Ask(), 0);
}

TEST_F(SubclassTest, WithoutAWindowNothingHappens) {
    ui::Subclass subclass;
    subclass.Attach(nullptr, Answering(7));
    EXPECT_FALSE(subclass.IsAttached());
}

TEST(OwnedHandles, AListViewIsNoValue) {
    static_assert(!std::is_copy_constructible_v<ui::ListView> && !std::is_move_constructible_v<ui::ListView>);
    static_assert(!std::is_copy_assignable_v<ui::ListView> && !std::is_move_assignable_v<ui::ListView>);
}

} // namespace
