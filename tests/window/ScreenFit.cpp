#include "ScreenFit.h"

#include <array>

namespace {

struct Screen {
    int scalePercent;
    SIZE size;
};

constexpr std::array Screens = {Screen{100, {1366, 768}}, Screen{125, {1366, 768}}, Screen{150, {1920, 1080}},
                                Screen{175, {1920, 1080}}, Screen{200, {2560, 1440}}};
constexpr int TaskBarPixels = 48;

// Of Windows 10 and 11 at 96 dots an inch. Its caption and menu grow with the screen, and so does a frame to resize by.
constexpr int CaptionPixels = 23;
constexpr int MenuPixels = 20;
constexpr int SizingFramePixels = 8;
constexpr int FramePixels = 3;

int ScalePercentOf(HWND window) {
    const HDC context = GetDC(window);
    const int dots = GetDeviceCaps(context, LOGPIXELSY);
    ReleaseDC(window, context);
    return MulDiv(dots, 100, 96);
}

std::string Text(SIZE size) {
    return std::to_string(size.cx) + " x " + std::to_string(size.cy);
}

SIZE OuterSize(HWND form, int scalePercent) {
    const auto scaled = [&](int pixels) { return (pixels * scalePercent + 99) / 100; };
    const bool isSizable = (GetWindowLongPtrW(form, GWL_STYLE) & WS_THICKFRAME) != 0;
    const int frame = isSizable ? scaled(SizingFramePixels) : FramePixels;
    RECT inner{};
    GetClientRect(form, &inner);
    const int menu = GetMenu(form) != nullptr ? scaled(MenuPixels) : 0;
    return {inner.right + 2 * frame, inner.bottom + scaled(CaptionPixels) + menu + 2 * frame};
}

} // namespace

std::string TooLargeForScreen(HWND form) {
    const int scalePercent = ScalePercentOf(form);
    const SIZE outer = OuterSize(form, scalePercent);
    for (const Screen& screen : Screens) {
        if (screen.scalePercent != scalePercent) continue;
        const SIZE room{screen.size.cx, screen.size.cy - TaskBarPixels};
        const bool fits = outer.cx <= room.cx && outer.cy <= room.cy;
        return fits ? std::string() : "takes " + Text(outer) + " of " + Text(room);
    }
    return "no screen is known at " + std::to_string(scalePercent) + " %";
}
