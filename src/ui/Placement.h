#pragma once

#include "ui/Windows.h"

namespace ui {

/// Edges in a dialog template's units.
struct PlaceDialogUnits {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// A template's units in a dialog are what its font makes of them, but no less than at 96 dots an inch, enlarged with
/// the screen: the font grows by whole pixels, and what stands in twips beside would run into what stands in units.
RECT PixelsOf(const PlaceDialogUnits& place, HWND dialog);

/// Gives a dialog that was just made, and all that stands in it, the size that its template has in these units.
void EnlargeToUnits(HWND dialog);

/// Gives a window an outer size; one that is not shown yet stays centred. It is moved where it would not end on the
/// screen, and begins there in any case.
void ResizeOnScreen(HWND window, SIZE outer);

} // namespace ui
