#include "check/NumberWords.h"

#include "core/NumberFormat.h"
#include "resources/TextId.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double Kilo = 1024;
constexpr const wchar_t* WholePicture = L"# ### ### ### ##0";
constexpr const wchar_t* TenthPicture = L"# ##0.0";
constexpr int SecondsPerMinute = 60;
constexpr int MinutesPerHour = 60;

/// A picture puts its blanks before the first digit too.
std::wstring Pictured(double value, const wchar_t* picture, const std::wstring& decimalSeparator) {
    const std::wstring text = FormatNumber(value, picture, decimalSeparator);
    return text.substr(std::min(text.find_first_not_of(L' '), text.size()));
}

} // namespace

std::wstring Filled(std::wstring text, const std::vector<std::wstring>& values) {
    // Parted first: a value may hold what looks like a place for another one.
    std::wstring filled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t value =
            at + 1 < text.size() && text[at] == L'%' && text[at + 1] >= L'1' && text[at + 1] <= L'9'
                ? static_cast<std::size_t>(text[at + 1] - L'1')
                : values.size();
        if (value < values.size()) {
            filled += values[value];
            ++at;
        } else {
            filled += text[at];
        }
    }
    return filled;
}

std::wstring NumberWords::Count(std::uint64_t value) const {
    return Pictured(static_cast<double>(value), WholePicture, decimalSeparator);
}

std::wstring NumberWords::Size(std::uint64_t bytes) const {
    auto amount = static_cast<double>(bytes);
    if (amount < Kilo) return Filled(texts(TextId::CheckBytes), {Count(bytes)});
    TextId unit = TextId::CheckKilobytes;
    amount /= Kilo;
    for (const TextId larger : {TextId::CheckMegabytes, TextId::CheckGigabytes}) {
        // What would be written as 1024.0 of one unit is 1.0 of the next.
        if (amount < Kilo - 0.05) break;
        amount /= Kilo;
        unit = larger;
    }
    return Filled(texts(unit), {Pictured(amount, TenthPicture, decimalSeparator)});
}

std::wstring NumberWords::Duration(double seconds) const {
    const auto whole = static_cast<long long>(std::ceil(seconds));
    const long long minutes = whole / SecondsPerMinute;
    if (minutes == 0) return Filled(texts(TextId::CheckSeconds), {std::to_wstring(whole)});
    if (minutes < MinutesPerHour)
        return Filled(texts(TextId::CheckMinutes),
                      {std::to_wstring(minutes), std::to_wstring(whole % SecondsPerMinute)});
    return Filled(texts(TextId::CheckHours),
                  {std::to_wstring(minutes / MinutesPerHour), std::to_wstring(minutes % MinutesPerHour)});
}
