#pragma once

#include <windows.h>

#include <string>

namespace kit {

/// What the screen shows of a window, as a PNG file. The window is in front of all others meanwhile, so that nothing
/// else gets into the picture.
std::string PictureOf(HWND window);

} // namespace kit
