#include "check/WindowWords.h"

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

std::wstring ShortVerdict(const ItemReport& item, const Texts& texts) {
    if (item.verdict == ItemVerdict::Whole && item.problems != 0) return texts(TextId::CheckShortNotRestorable);
    if (item.verdict == ItemVerdict::Whole && !item.remarks->findings.empty()) return texts(TextId::CheckShortRemarks);
    return texts(static_cast<TextId>(static_cast<int>(TextId::CheckShortWhole) + static_cast<int>(item.verdict)));
}

std::wstring ProgressWords(const NumberWords& words, const CheckJob::Progress& now, const WorkPace& pace) {
    const auto speed = pace.BytesPerSecond();
    const auto left = pace.SecondsLeft(now.totalBytes);
    const TextId text = left    ? TextId::CheckProgressLeft
                        : speed ? TextId::CheckProgressSpeed
                                : TextId::CheckProgressBytes;
    return Filled(words.texts(text),
                  {words.Size(now.doneBytes), words.Size(now.totalBytes),
                   words.Size(static_cast<std::uint64_t>(speed.value_or(0))), words.Duration(left.value_or(0))});
}

std::wstring AsParagraphs(const std::vector<std::wstring>& lines) {
    std::wstring text;
    for (const std::wstring& line : lines) text += (text.empty() ? L"" : L"\r\n") + line;
    return text;
}
