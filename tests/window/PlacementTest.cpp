// Where a window stands, and how large what stands in it is.
#include "TestForm.h"
#include "ui/Units.h"

#include <gtest/gtest.h>

namespace {

class Placement : public testing::Test {
  protected:
    ~Placement() override { form.Unload(); }

    RECT Place() const {
        RECT place{};
        GetWindowRect(form.Handle(), &place);
        return place;
    }
    RECT WorkArea() const {
        MONITORINFO screen{};
        screen.cbSize = sizeof screen;
        GetMonitorInfoW(MonitorFromWindow(form.Handle(), MONITOR_DEFAULTTONEAREST), &screen);
        return screen.rcWork;
    }
    void MoveTo(LONG left, LONG top) {
        SetWindowPos(form.Handle(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    TestForm form;
};

TEST_F(Placement, DialogUnitsAreNoLessThanTheScaleOfTheScreenAsks) {
    form.Create();
    // 22.5 twips to the right and 24.375 down, at 96 dots an inch exactly that.
    const ui::BoundsTwips button = form.testButton.Bounds();
    const ui::BoundsTwips cancel = form.testCancel.Bounds();
    RECT inner{};
    GetClientRect(form.Handle(), &inner);
    const int pixel = 1440 / ui::DotsPerInch(form.Handle()) + 1;
    EXPECT_GE(button.width, 60 * 22.5 - pixel);
    EXPECT_GE(cancel.left, 100 * 22.5 - pixel);
    EXPECT_GE(cancel.top, 30 * 24.375 - pixel);
    EXPECT_GE(ui::TwipsFromPixels(inner.right, form.Handle()), 220 * 22.5 - pixel);
    EXPECT_GE(ui::TwipsFromPixels(inner.bottom, form.Handle()), 160 * 24.375 - pixel);
    // Nor are they much more: the window has to fit its screen.
    EXPECT_LE(ui::TwipsFromPixels(inner.right, form.Handle()), 220 * 22.5 * 1.05);
    EXPECT_LE(ui::TwipsFromPixels(inner.bottom, form.Handle()), 160 * 24.375 * 1.05);
}

TEST_F(Placement, WindowThatIsNotShownYetStaysCentredWhenItGrows) {
    form.Create();
    MoveTo(400, 300);
    const RECT before = Place();
    form.SetInnerWidthTwips(form.InnerWidthTwips() + 1500);
    const RECT after = Place();
    EXPECT_GT(after.right - after.left, before.right - before.left);
    EXPECT_NEAR(after.left + after.right, before.left + before.right, 1);
    EXPECT_EQ(after.top, before.top);
}

TEST_F(Placement, WindowBeginsOnTheScreenThatItIsTooTallFor) {
    form.Create();
    form.SetInnerHeightTwips(60000);
    EXPECT_EQ(Place().top, WorkArea().top);
}

TEST_F(Placement, ShownWindowIsMovedUpWhenItWouldGrowBeyondTheScreen) {
    form.Create();
    form.Show();
    MoveTo(40, WorkArea().bottom - 200);
    form.SetHeightTwips(6000);
    EXPECT_EQ(Place().left, 40);
    EXPECT_EQ(Place().bottom, WorkArea().bottom);
}

TEST_F(Placement, ShownWindowIsNotPulledBackFromWhereTheUserPutIt) {
    form.Create();
    form.Show();
    MoveTo(-30, 100);
    form.SetHeightTwips(3000);
    EXPECT_EQ(Place().left, -30);
    EXPECT_EQ(Place().top, 100);
}

TEST_F(Placement, ShownWindowThatHangsOverTheRightEdgeStaysThereWhenItGrowsDown) {
    form.Create();
    form.Show();
    const LONG left = WorkArea().right - 40;
    MoveTo(left, 100);
    form.SetHeightTwips(3000);
    EXPECT_EQ(Place().left, left);
    EXPECT_EQ(Place().top, 100);
}

TEST_F(Placement, ShownWindowInSightOfTheRightEdgeIsNotPushedOverItWhenItGrowsWider) {
    form.Create();
    form.Show();
    MoveTo(WorkArea().right - (Place().right - Place().left), 100);
    form.SetInnerWidthTwips(form.InnerWidthTwips() + 1500);
    EXPECT_EQ(Place().right, WorkArea().right);
}

} // namespace
