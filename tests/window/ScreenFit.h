#pragma once

#include <windows.h>

#include <string>

/// Empty when a form with the frame that Windows draws around it fits the screen that agents have at the scale of this
/// one, above a taskbar; else what it takes and what there is, in pixels.
std::string TooLargeForScreen(HWND form);
