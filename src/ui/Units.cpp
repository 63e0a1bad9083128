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
    SetWindowPos(window, nullptr, PixelsFromTwips(bounds.left, window), PixelsFromTwips(bounds.top, window),
                 PixelsFromTwips(bounds.width, window), PixelsFromTwips(bounds.height, window),
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
