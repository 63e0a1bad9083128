#pragma once

#include <string>
#include <string_view>

/// Text in the encodings of archives, consoles and reports. Pure functions; the Windows side and the tests' native side
/// each supply one definition.

/// UTF-8 bytes of a text; what is no character becomes the replacement character.
std::string ToUtf8(std::wstring_view text);
/// The text of UTF-8 bytes; what is no UTF-8 becomes the replacement character.
std::wstring FromUtf8(std::string_view bytes);

/// The text in the code page of the system's consoles, in which the archiver stores names and passwords.
std::string ToOem(std::wstring_view text);
/// The number of that code page.
unsigned OemCodePage();
