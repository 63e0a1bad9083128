#include "ui/Units.h"

#include "win32/UniqueHandle.h"

#include <initializer_list>

namespace ui {

int DotsPerInch(HWND window) {
    const WindowContext context(window);
    const int dotsPerInch = GetDeviceCaps(context.Get(), LOGPIXELSX);
    return dotsPerInch > 0 ? dotsPerInch : 96;
}

int PixelsFromTwips(int twips, HWND window) {
    return MulDiv(twips, DotsPerInch(window), 1440);
}

int TwipsFromPixels(int pixels, HWND window) {
    return MulDiv(pixels, 1440, DotsPerInch(window));
}

BoundsTwips BoundsOf(HWND window) {
    RECT rectangle{};
    GetWindowRect(window, &rectangle);
    MapWindowPoints(nullptr, GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&rectangle), 2);
    return {TwipsFromPixels(rectangle.left, window), TwipsFromPixels(rectangle.top, window),
            TwipsFromPixels(rectangle.right - rectangle.left, window),
            TwipsFromPixels(rectangle.bottom - rectangle.top, window)};
}

void MoveTo(HWND window, const BoundsTwips& bounds) {
    HWND parent = GetAncestor(window, GA_PARENT);
    RECT before{};
    GetWindowRect(window, &before);
    // By its edges: rounded for itself, a size may reach a pixel beyond what it fills.
    const int left = PixelsFromTwips(bounds.left, window);
    const int top = PixelsFromTwips(bounds.top, window);
    SetWindowPos(window, nullptr, left, top, PixelsFromTwips(bounds.left + bounds.width, window) - left,
                 PixelsFromTwips(bounds.top + bounds.height, window) - top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    // A frame does not paint its inside: its old edges would stay, were the parent not painted anew.
    RECT after{};
    GetWindowRect(window, &after);
    for (RECT place : {before, after}) {
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
        RedrawWindow(parent, &place, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
}

} // namespace ui
