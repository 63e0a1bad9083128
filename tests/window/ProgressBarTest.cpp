#include "TestForm.h"
#include "WaitFor.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

LRESULT CALLBACK CountPaints(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR count) {
    if (message == WM_PAINT) ++*reinterpret_cast<int*>(count);
    return DefSubclassProc(window, message, wParam, lParam);
}

TEST(ProgressBar, IsNotPaintedForEachOfManySteps) {
    TestForm form;
    form.Create();
    form.Show();
    ui::RunPendingMessages();
    int paints = 0;
    SetWindowSubclass(form.testProgress.Handle(), CountPaints, 0, reinterpret_cast<DWORD_PTR>(&paints));
    constexpr int steps = 5000;
    const DWORD start = GetTickCount();
    form.testProgress.SetRange(0, steps);
    for (int step = 1; step <= steps; ++step) {
        form.testProgress.SetValue(step);
        ASSERT_EQ(form.testProgress.Value(), step);
    }
    const int frames = static_cast<int>(GetTickCount() - start) / 40;
    EXPECT_EQ(SendMessageW(form.testProgress.Handle(), PBM_GETPOS, 0, 0), steps);
    EXPECT_GE(paints, 10);
    // A value may take two: it is reached from above.
    EXPECT_LE(paints, 2 * (20 + frames));
    RemoveWindowSubclass(form.testProgress.Handle(), CountPaints, 0);
}

LRESULT CALLBACK RecordPlaces(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR places) {
    if (message == PBM_SETPOS) reinterpret_cast<std::vector<int>*>(places)->push_back(static_cast<int>(wParam));
    return DefSubclassProc(window, message, wParam, lParam);
}

TEST(ProgressBar, ReachesAHigherValueFromAbove) {
    // A themed bar glides up to a value, and shows a lower one at once.
    TestForm form;
    form.Create();
    HWND bar = form.testProgress.Handle();
    form.testProgress.SetRange(0, 100);
    std::vector<int> places;
    SetWindowSubclass(bar, RecordPlaces, 0, reinterpret_cast<DWORD_PTR>(&places));
    form.testProgress.SetValue(50);
    EXPECT_EQ(places, (std::vector<int>{51, 50}));
    EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 50);
    places.clear();
    form.testProgress.SetValue(100);
    EXPECT_EQ(places, (std::vector<int>{101, 100}));
    EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 100);
    EXPECT_EQ(form.testProgress.Max(), 100) << "the range is what it was";
    places.clear();
    form.testProgress.SetValue(0);
    EXPECT_EQ(places, std::vector<int>{0});
    RemoveWindowSubclass(bar, RecordPlaces, 0);
}

TEST(ProgressBar, ShowsASlowStepOfAFiftiethAndAfterASecondAny) {
    TestForm form;
    form.Create();
    const auto shown = [&] { return static_cast<int>(SendMessageW(form.testProgress.Handle(), PBM_GETPOS, 0, 0)); };
    form.testProgress.SetRange(0, 1000);
    DWORD started = 0;
    int shownAtOnce = 0;
    // Until nothing else on the machine has come between.
    do {
        form.testProgress.SetValue(0);
        started = GetTickCount();
        form.testProgress.SetValue(50);
        shownAtOnce = shown();
    } while (GetTickCount() - started > 20);
    EXPECT_EQ(shownAtOnce, 0);
    EXPECT_EQ(form.testProgress.Value(), 50);
    form.testProgress.SetValue(500);
    EXPECT_EQ(shown(), 500);
    // A fiftieth of the range is shown as soon as the last picture has stood for a frame, less only after a second.
    const auto isShownNow = [&](int value) {
        form.testProgress.SetValue(value);
        return shown() == value;
    };
    EXPECT_TRUE(WaitFor([&] { return isShownNow(520); }));
    const ULONGLONG shownAt = GetTickCount64();
    EXPECT_TRUE(WaitFor([&] { return isShownNow(521); }));
    EXPECT_GE(GetTickCount64() - shownAt, 900u);
    form.testProgress.SetValue(1000);
    EXPECT_EQ(shown(), 1000);
    form.testProgress.SetValue(0);
    EXPECT_EQ(shown(), 0);
}

TEST(ProgressBar, KeepsItsValueWithinItsRange) {
    TestForm form;
    form.Create();
    form.testProgress.SetRange(0, 3);
    form.testProgress.SetValue(-1);
    EXPECT_EQ(form.testProgress.Value(), 0);
    form.testProgress.SetValue(4);
    EXPECT_EQ(form.testProgress.Value(), 3);
    form.testProgress.SetRange(0, 2);
    EXPECT_EQ(form.testProgress.Value(), 2);
    EXPECT_EQ(form.testProgress.Max(), 2);
    // An empty selection.
    form.testProgress.SetRange(0, 0);
    EXPECT_EQ(form.testProgress.Value(), 0);
}

TEST(ProgressBar, StartsAgainWithItsForm) {
    TestForm form;
    form.Create();
    form.testProgress.SetRange(0, 100);
    form.testProgress.SetValue(70);
    form.Unload();
    form.Create();
    EXPECT_EQ(form.testProgress.Value(), 0);
}

} // namespace
