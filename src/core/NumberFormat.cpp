#include "core/NumberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

/// A double holds so many decimal digits for sure.
constexpr int SafeDigits = 15;

bool IsDigitPlace(wchar_t c) {
    return c == L'#' || c == L'0';
}

/// `value` (not negative) in plain decimals. The safe digits are what is rounded, so that a half that a double holds a
/// hair low rounds as it reads.
std::wstring Decimals(double value, int places) {
    std::array<char, 40> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, SafeDigits - 1).ptr;
    const std::string scientific(text.data(), end);
    const auto exponentMark = scientific.find('e');
    if (exponentMark == std::string::npos) return std::wstring(scientific.begin(), scientific.end());
    // A digit in front takes the carry.
    std::string digits = "0";
    digits.append(scientific, 0, 1).append(scientific, 2, exponentMark - 2);
    int wholeDigits = std::stoi(scientific.substr(exponentMark + 1)) + 2;
    if (wholeDigits < 1) {
        digits.insert(0, 1 - static_cast<std::size_t>(wholeDigits), '0');
        wholeDigits = 1;
    }
    const std::size_t kept = static_cast<std::size_t>(wholeDigits) + static_cast<std::size_t>(places);
    const bool roundsUp = kept < digits.size() && digits[kept] >= '5';
    digits.resize(kept, '0');
    for (std::size_t at = kept; roundsUp && at-- > 0;) {
        if (++digits[at] <= '9') break;
        digits[at] = '0';
    }
    digits.insert(static_cast<std::size_t>(wholeDigits), 1, '.');
    digits.erase(0, std::min(digits.find_first_not_of('0'), static_cast<std::size_t>(wholeDigits) - 1));
    return std::wstring(digits.begin(), digits.end());
}

} // namespace

std::wstring FormatNumber(double value, const std::wstring& picture, const std::wstring& decimalSeparator) {
    const auto point = picture.find(L'.');
    const std::wstring wholePicture = picture.substr(0, point);
    const std::wstring fractionPicture = point == std::wstring::npos ? L"" : picture.substr(point + 1);
    const auto places = std::count_if(fractionPicture.begin(), fractionPicture.end(), IsDigitPlace);

    const std::wstring digits = Decimals(std::fabs(value), static_cast<int>(places));
    std::wstring whole = digits.substr(0, digits.find(L'.'));
    if (whole == L"0") whole.clear();
    const std::wstring fraction = places == 0 ? L"" : digits.substr(digits.find(L'.') + 1);

    auto placesLeft = static_cast<std::size_t>(std::count_if(wholePicture.begin(), wholePicture.end(), IsDigitPlace));
    std::size_t next = whole.size() > placesLeft ? whole.size() - placesLeft : 0;
    std::wstring surplus = whole.substr(0, next);
    std::wstring result;
    for (const wchar_t c : wholePicture) {
        if (!IsDigitPlace(c)) {
            result += c;
            continue;
        }
        result += surplus;
        surplus.clear();
        if (whole.size() >= placesLeft) {
            result += whole[next++];
        } else if (c == L'0') {
            result += L'0';
        }
        --placesLeft;
    }
    if (point != std::wstring::npos) {
        result += decimalSeparator;
        std::size_t place = 0;
        for (const wchar_t c : fractionPicture) result += IsDigitPlace(c) ? fraction[place++] : c;
    }
    const bool isZero = whole.empty() && fraction.find_first_not_of(L'0') == std::wstring::npos;
    return value < 0 && !isZero ? L"-" + result : result;
}
