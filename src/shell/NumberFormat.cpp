#include "shell/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

bool IsDigitPlace(wchar_t c) {
    return c == L'#' || c == L'0';
}

/// `value` (not negative) in plain decimals. The nudge makes a half that a double holds a hair low round as it reads.
std::wstring Decimals(double value, int places) {
    char text[400];
    std::snprintf(text, sizeof text, "%.*f", places, value * (1 + 4e-16));
    return std::wstring(text, text + std::char_traits<char>::length(text));
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
