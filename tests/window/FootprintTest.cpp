#include "Footprint.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

TEST(FootprintTest, TellsALeakedHandleObjectAndWindow) {
    const Footprint before = FootprintNow();
    HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const Footprint after = FootprintNow();
    EXPECT_GT(after.handles, before.handles);
    EXPECT_GT(after.gdiObjects, before.gdiObjects);
    EXPECT_GT(after.windows, before.windows);
    DestroyWindow(window);
    DeleteObject(brush);
    CloseHandle(event);
}

} // namespace
