#include "ui/Placement.h"

#include "ui/Units.h"

#include <algorithm>

namespace ui {

namespace {

constexpr int UsualDotsPerInch = 96;
// A whole number of the font's average characters, in units and in pixels at the usual scale.
constexpr SIZE Sample{4000, 8000};
constexpr SIZE UsualSamplePixels{6000, 13000};

/// A ratio that is never below one.
struct Enlargement {
    int wanted;
    int actual;

    LONG Of(LONG pixels) const { return MulDiv(pixels, std::max(wanted, actual), actual); }
    bool IsNone() const { return wanted <= actual; }
};

struct Enlargements {
    Enlargement x;
    Enlargement y;

    bool AreNone() const { return x.IsNone() && y.IsNone(); }
    RECT Of(const RECT& place) const {
        return {x.Of(place.left), y.Of(place.top), x.Of(place.right), y.Of(place.bottom)};
    }
};

Enlargements EnlargementsIn(HWND dialog) {
    RECT actual{0, 0, Sample.cx, Sample.cy};
    MapDialogRect(dialog, &actual);
    const int dots = DotsPerInch(dialog);
    return {{MulDiv(UsualSamplePixels.cx, dots, UsualDotsPerInch), actual.right},
            {MulDiv(UsualSamplePixels.cy, dots, UsualDotsPerInch), actual.bottom}};
}

/// What `SetWindowPos` takes for the height: that of a drop-down list includes what drops down.
RECT WholePlace(HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    RECT dropped{};
    if (SendMessageW(control, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped)) != 0)
        place.bottom = dropped.bottom;
    return place;
}

void EnlargeControl(HWND control, const Enlargements& enlargements) {
    RECT place = WholePlace(control);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
    place = enlargements.Of(place);
    SetWindowPos(control, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

LONG Within(LONG from, LONG length, LONG first, LONG end) {
    return std::max(std::min(from, end - length), first);
}

} // namespace

RECT PixelsOf(const PlaceDialogUnits& place, HWND dialog) {
    RECT pixels{place.left, place.top, place.right, place.bottom};
    MapDialogRect(dialog, &pixels);
    return EnlargementsIn(dialog).Of(pixels);
}

void EnlargeToUnits(HWND dialog) {
    const Enlargements enlargements = EnlargementsIn(dialog);
    if (enlargements.AreNone()) return;
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT))
        EnlargeControl(control, enlargements);
    if ((GetWindowLongPtrW(dialog, GWL_STYLE) & WS_CHILD) != 0) return;
    RECT outer{};
    RECT inner{};
    GetWindowRect(dialog, &outer);
    GetClientRect(dialog, &inner);
    const RECT enlarged = enlargements.Of(inner);
    ResizeOnScreen(dialog, {outer.right - outer.left + enlarged.right - inner.right,
                            outer.bottom - outer.top + enlarged.bottom - inner.bottom});
}

void ResizeOnScreen(HWND window, SIZE outer) {
    RECT place{};
    GetWindowRect(window, &place);
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
    POINT first{screen.rcWork.left, screen.rcWork.top};
    POINT end{screen.rcWork.right, screen.rcWork.bottom};
    if (IsWindowVisible(window)) {
        // Where the user has put it beyond the screen's edge it is not pulled back; only its new foot stays in sight.
        first = {std::min(place.left, first.x), std::min(place.top, first.y)};
        end.x = std::max(place.right, end.x);
    } else {
        place.left -= (outer.cx - (place.right - place.left)) / 2;
        place.top -= (outer.cy - (place.bottom - place.top)) / 2;
    }
    const LONG left = Within(place.left, outer.cx, first.x, end.x);
    const LONG top = Within(place.top, outer.cy, first.y, end.y);
    SetWindowPos(window, nullptr, left, top, outer.cx, outer.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace ui
