#pragma once

#include <string>

namespace kit {

/// Writes to the black window, or as UTF-8 where the output goes elsewhere.
void Print(const std::wstring& text);

/// A line that the person types; empty at the end of the input.
std::wstring ReadLine();

/// From now on the person's wish to break off (Ctrl+C, the window's cross) is noted, and the run ends in an orderly
/// way.
void WatchForEnd();
bool IsEndWished();

} // namespace kit
