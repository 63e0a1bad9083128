#pragma once

#include <string>
#include <string_view>

/// Text conversions that belong to the system's locale. Pure functions; the Windows side and the tests' native side
/// each supply one definition.

/// The text with every letter in upper case, as the user's system maps case (accented letters included).
std::wstring UpperCase(std::wstring_view text);

/// The text in the system's ANSI code page; each character that it lacks becomes "?", never one that resembles it.
std::string ToAnsi(std::wstring_view text);

/// Text from bytes in the system's ANSI code page; every byte gives a character, none is refused.
std::wstring FromAnsi(std::string_view bytes);
