#include "ImportSwap.h"
#include "TestForm.h"
#include "ui/MessagePump.h"
#include "ui/Units.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

extern "C" {
extern decltype(&MapDialogRect) __imp_MapDialogRect;
}

namespace {

TEST(Form, LoadsShowsAndUnloadsOnce) {
    TestForm form;
    form.Create();
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_EQ(form.loads, 1);
    form.Show();
    EXPECT_EQ(form.activations, 1);
    form.Unload();
    form.Unload();
    EXPECT_EQ(form.unloads, 1);
    EXPECT_FALSE(form.IsLoaded());
}

TEST(Form, CarriesTheProgramsIcon) {
    TestForm form;
    form.Create();
    EXPECT_NE(SendMessageW(form.Handle(), WM_GETICON, ICON_SMALL, 0), 0);
}

TEST(Form, CanBeLoadedAgain) {
    TestForm form;
    form.Create();
    form.Unload();
    form.Create();
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_EQ(form.loads, 2);
}

TEST(Form, NothingThrownLeavesTheWindowProcedure) {
    TestForm form;
    form.testButton.OnClick([] { throw std::runtime_error("handler"); });
    form.Create();
    form.testButton.Click();
    EXPECT_EQ(form.unhandled, 1);
}

TEST(Form, ModalWindowDisablesItsOwnerAndActivatesItAfterwards) {
    TestForm owner;
    owner.Create();
    owner.Show();
    TestForm modal;
    bool wasOwnerEnabled = true;
    modal.whenActivated = [&] {
        wasOwnerEnabled = IsWindowEnabled(owner.Handle()) != FALSE;
        modal.Post([&] { modal.Unload(); });
    };
    modal.ShowModal(&owner);
    EXPECT_FALSE(wasOwnerEnabled);
    EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
    EXPECT_EQ(owner.activations, 2);
}

TEST(Form, RefusesToCloseWhileItsWorkRuns) {
    TestForm form;
    form.Create();
    form.mayClose = false;
    SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(form.IsLoaded());
    form.mayClose = true;
    SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(form.IsLoaded());
}

TEST(Form, EscapePressesTheCancelButtonOnlyWhenItCanBePressed) {
    TestForm form;
    int cancels = 0;
    form.testCancel.OnClick([&] { ++cancels; });
    form.SetCancelButton(IDC_testCancel);
    form.Create();
    form.Show();
    SendMessageW(form.Handle(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(cancels, 1);
    form.testCancel.Enable(false);
    SendMessageW(form.Handle(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(cancels, 1);
    EXPECT_TRUE(form.IsLoaded());
}

TEST(Form, HiddenFrameHidesWhatItHoldsAndKeepsWhatWasWanted) {
    TestForm form;
    form.Create();
    form.SetFrame(IDC_testFrame, {IDC_testLabel, IDC_testText});
    form.Show();
    form.testText.Show(false);
    form.testFrame.Show(false);
    EXPECT_FALSE(IsWindowVisible(form.testLabel.Handle()));
    form.testText.Show(true);
    EXPECT_FALSE(IsWindowVisible(form.testText.Handle())) << "a control must not come up in a hidden frame";
    form.testFrame.Show(true);
    EXPECT_TRUE(IsWindowVisible(form.testLabel.Handle()));
    EXPECT_TRUE(IsWindowVisible(form.testText.Handle()));
}

TEST(Form, HeightGrowsByWhatTheCaptionIsTallerThanItWas) {
    TestForm form;
    form.Create();
    form.SetHeightTwips(2865);
    RECT outer{};
    RECT inner{};
    GetWindowRect(form.Handle(), &outer);
    GetClientRect(form.Handle(), &inner);
    const int innerTwips = ui::TwipsFromPixels(inner.bottom, form.Handle());
    EXPECT_GE(innerTwips, 2865 - 375 - 15);
    EXPECT_GE(outer.bottom - outer.top, ui::PixelsFromTwips(2865, form.Handle()));
}

TEST(Form, PostedWorkIsDroppedWhenTheWindowGoesFirst) {
    TestForm form;
    form.Create();
    int runs = 0;
    form.Post([&] { ++runs; });
    ui::RunPendingMessages();
    EXPECT_EQ(runs, 1);
    form.Post([&] { ++runs; });
    form.Unload();
    ui::RunPendingMessages();
    EXPECT_EQ(runs, 1);
}

/// Counts what it is told of its size before it is loaded.
class SizedForm : public TestForm {
  public:
    int sizesBeforeLoad = 0;

  private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM) override {
        if (message == WM_SIZE && loads == 0) ++sizesBeforeLoad;
        return std::nullopt;
    }
};

/// As with a font that has fallen far behind the scale of the screen.
BOOL WINAPI MapToAPixelAUnit(HWND, LPRECT) {
    return TRUE;
}

TEST(Form, IsEnlargedToItsUnitsBeforeItHearsOfAnySize) {
    TestForm usual;
    usual.Create();
    const ImportSwap map(&__imp_MapDialogRect, &MapToAPixelAUnit);
    SizedForm form;
    form.Create();
    EXPECT_GT(form.InnerWidthTwips(), usual.InnerWidthTwips());
    EXPECT_EQ(form.sizesBeforeLoad, 0);
}

} // namespace
