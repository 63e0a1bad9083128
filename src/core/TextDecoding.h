#pragma once

#include <string>
#include <string_view>

/// The text of a file. A byte-order mark says UTF-8 or UTF-16 of either order and is not part of the text; without one
/// the bytes are in the system's ANSI code page. What is damaged gives replacement characters, and nothing is refused.
std::wstring DecodeText(std::string_view bytes);
