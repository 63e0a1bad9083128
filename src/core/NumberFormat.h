#pragma once

#include <string>

/// Writes a number by a picture of "#" (digit or nothing), "0" (digit), "." (the user's decimal separator) and blanks
/// (output as they stand, also before the first digit). Digits beyond the picture stand where its first digit stands.
/// Rounds halves away from zero.
std::wstring FormatNumber(double value, const std::wstring& picture, const std::wstring& decimalSeparator);

/// Bytes in units of 1,048,576.
constexpr double Megabytes(double bytes) {
    return bytes / 1024.0 / 1024.0;
}

/// The picture of the space figures.
inline constexpr const wchar_t* MegabytePicture = L"# ### ##0.000";
