#pragma once

#include "ui/Windows.h"

namespace ui {

/// Pixels per inch of the screen that shows `window` (null: the desktop).
int DotsPerInch(HWND window);

/// 1,440 twips are an inch. Both round to the nearest.
int PixelsFromTwips(int twips, HWND window);
int TwipsFromPixels(int pixels, HWND window);

/// A place and size in twips, relative to the parent's inside.
struct BoundsTwips {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// A window's place in its parent, and the way to change it.
BoundsTwips BoundsOf(HWND window);
void MoveTo(HWND window, const BoundsTwips& bounds);

} // namespace ui
