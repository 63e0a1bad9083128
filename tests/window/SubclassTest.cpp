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

TEST_F(SubclassTest, OneThatGoesWhileAnotherHasAMessageLetsItThrough) {
    auto behind = std::make_unique<ui::Subclass>();
    ui::Subclass before;
    behind->Attach(form.testText.Handle(), Answering(7));
    before.Attach(form.testText.Handle(), [&behind](const ui::WindowMessage& message) {
        behind.reset();
        return message.PassOn();
    });
    EXPECT_EQ(Ask(), 0);
    form.testText.SetText(L"passed on");
    EXPECT_EQ(form.testText.Text(), L"passed on");
}

TEST_F(SubclassTest, OneThatComesWhileAnotherHasAMessageSeesTheNext) {
    ui::Subclass early;
    ui::Subclass late;
    early.Attach(form.testText.Handle(), [&late](const ui::WindowMessage& message) {
        if (message.id == Question) late.Attach(message.window, Answering(8));
        return message.PassOn();
    });
    EXPECT_EQ(Ask(), 0);
    EXPECT_EQ(Ask(), 8);
}

/// A procedure that somebody else has put in front, and what stands behind it.
WNDPROC behindTheOther = nullptr;
LRESULT CALLBACK OtherProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(behindTheOther, window, message, wParam, lParam);
}

TEST_F(SubclassTest, MayGoFromBehindAnotherProcedureAndComeBack) {
    HWND window = form.testText.Handle();
    const LONG_PTR own = GetWindowLongPtrW(window, GWLP_WNDPROC);
    auto subclass = std::make_unique<ui::Subclass>();
    subclass->Attach(window, Answering(7));
    behindTheOther =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OtherProcedure)));
    subclass.reset();
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_WNDPROC), reinterpret_cast<LONG_PTR>(OtherProcedure));
    form.testText.SetText(L"passed on");
    EXPECT_EQ(form.testText.Text(), L"passed on");
    ui::Subclass next;
    next.Attach(window, Answering(8));
    EXPECT_EQ(Ask(), 8);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(behindTheOther));
    next.Detach();
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_WNDPROC), own);
}

BOOL CALLBACK CountProperty(HWND, LPWSTR, HANDLE, ULONG_PTR count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int PropertiesOf(HWND window) {
    int count = 0;
    EnumPropsExW(window, CountProperty, reinterpret_cast<LPARAM>(&count));
    return count;
}

TEST_F(SubclassTest, GivesTheWindowNoPropertyThatEachMessageWouldLookUp) {
    const int before = PropertiesOf(form.testText.Handle());
    ui::Subclass subclass;
    subclass.Attach(form.testText.Handle(), Answering(7));
    EXPECT_EQ(PropertiesOf(form.testText.Handle()), before);
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
