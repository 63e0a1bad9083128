#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// The captions of a form, hosted controls included, that do not fit their control, hidden ones too; one line each with
/// the control's number, its text and what it needs against what it has, in pixels. Empty when all fit.
std::vector<std::string> ClippedCaptions(HWND form);

/// The visible controls that lie over each other or across the edge of a frame. Empty when there are none.
std::vector<std::string> OverlappingControls(HWND form);
