#pragma once

#include <cstdint>
#include <string>

/// The whole number that a text stands for, as the system converts texts: blanks around it, a sign before or after,
/// digit grouping, decimals (halves go to the even number), an exponent, or the prefix &H or &O.
/// `decimalSeparator` is the user's. Throws 13 (type mismatch) for what is no number, 6 (overflow) beyond 32 bits.
std::int32_t ToLong(const std::wstring& text, const std::wstring& decimalSeparator);
