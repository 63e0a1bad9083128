#include "core/LongConversion.h"

#include "platform/RuntimeError.h"

#include <cmath>
#include <cstdlib>
#include <string_view>

namespace {

constexpr wchar_t NoBreakSpace = 0xA0;

bool IsBlank(wchar_t c) {
    return c == L' ' || (c >= L'\t' && c <= L'\r');
}

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

/// Where decimals are written with a comma, digits are grouped by blanks, else by commas.
bool IsGrouping(wchar_t c, const std::wstring& decimalSeparator) {
    if (decimalSeparator == L",") return c == NoBreakSpace || c == L' ';
    return c == L',';
}

std::wstring_view Trim(std::wstring_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

/// Takes a sign off either end; true for minus. A number carries one sign at most.
bool TakeSign(std::wstring_view& text) {
    const auto isSign = [](wchar_t c) { return c == L'-' || c == L'+'; };
    bool isNegative = false;
    if (!text.empty() && isSign(text.front())) {
        isNegative = text.front() == L'-';
        text.remove_prefix(1);
    } else if (!text.empty() && isSign(text.back())) {
        isNegative = text.back() == L'-';
        text.remove_suffix(1);
    }
    text = Trim(text);
    return isNegative;
}

std::int32_t FromBase(std::wstring_view digits, int base) {
    std::uint64_t value = 0;
    if (digits.empty()) throw RuntimeError(ErrorNumber::TypeMismatch);
    for (const wchar_t c : digits) {
        int digit = -1;
        if (IsDigit(c)) digit = c - L'0';
        if (c >= L'a' && c <= L'f') digit = c - L'a' + 10;
        if (c >= L'A' && c <= L'F') digit = c - L'A' + 10;
        if (digit < 0 || digit >= base) throw RuntimeError(ErrorNumber::TypeMismatch);
        value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
        if (value > UINT32_MAX) throw RuntimeError(ErrorNumber::Overflow);
    }
    // All 32 bits are written out, the sign's included.
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

/// The number in the form that the C library reads; throws 13 when it is none.
std::string PlainNumber(std::wstring_view text, const std::wstring& decimalSeparator) {
    std::string plain;
    std::size_t at = 0;
    std::size_t digits = 0;
    while (at < text.size() && (IsDigit(text[at]) || (digits > 0 && IsGrouping(text[at], decimalSeparator)))) {
        if (IsDigit(text[at])) {
            plain += static_cast<char>(text[at]);
            ++digits;
        }
        ++at;
    }
    if (!decimalSeparator.empty() && text.substr(at).starts_with(decimalSeparator)) {
        at += decimalSeparator.size();
        plain += '.';
        for (; at < text.size() && IsDigit(text[at]); ++at, ++digits) plain += static_cast<char>(text[at]);
    }
    if (digits == 0) throw RuntimeError(ErrorNumber::TypeMismatch);
    if (at < text.size() && std::wstring_view(L"eEdD").find(text[at]) != std::wstring_view::npos) {
        plain += 'e';
        ++at;
        if (at < text.size() && (text[at] == L'-' || text[at] == L'+')) plain += static_cast<char>(text[at++]);
        if (at == text.size()) throw RuntimeError(ErrorNumber::TypeMismatch);
        for (; at < text.size() && IsDigit(text[at]); ++at) plain += static_cast<char>(text[at]);
    }
    if (at != text.size()) throw RuntimeError(ErrorNumber::TypeMismatch);
    return plain;
}

} // namespace

std::int32_t ToLong(const std::wstring& text, const std::wstring& decimalSeparator) {
    std::wstring_view rest = Trim(text);
    if (rest.size() >= 2 && rest[0] == L'&') {
        if (rest[1] == L'h' || rest[1] == L'H') return FromBase(rest.substr(2), 16);
        if (rest[1] == L'o' || rest[1] == L'O') return FromBase(rest.substr(2), 8);
    }
    const bool isNegative = TakeSign(rest);
    const double size = std::strtod(PlainNumber(rest, decimalSeparator).c_str(), nullptr);
    const double value = std::nearbyint(isNegative ? -size : size);
    if (!(value >= INT32_MIN && value <= INT32_MAX)) throw RuntimeError(ErrorNumber::Overflow);
    return static_cast<std::int32_t>(value);
}
