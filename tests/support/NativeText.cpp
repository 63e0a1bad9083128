// The system's text conversions where there is no Windows: code page 1252, and the case of the alphabets used with it.
#include "platform/Text.h"

#include <array>

namespace {

/// Bytes 0x80 to 0x9F of code page 1252; the five that it leaves open stand for themselves.
constexpr std::array<char16_t, 32> Upper1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsIn(wchar_t c, unsigned first, unsigned last) {
    return static_cast<unsigned>(c) >= first && static_cast<unsigned>(c) <= last;
}

wchar_t UpperCaseOf(wchar_t c) {
    const auto code = static_cast<unsigned>(c);
    if (IsIn(c, L'a', L'z')) return c - 0x20;
    if (IsIn(c, 0xE0, 0xFE) && code != 0xF7) return c - 0x20;
    if (code == 0xFF) return 0x178;
    if ((IsIn(c, 0x100, 0x12F) || IsIn(c, 0x132, 0x137) || IsIn(c, 0x14A, 0x177)) && code % 2 == 1) return c - 1;
    if ((IsIn(c, 0x139, 0x148) || IsIn(c, 0x179, 0x17E)) && code % 2 == 0) return c - 1;
    if (IsIn(c, 0x3B1, 0x3C9) && code != 0x3C2) return c - 0x20;
    if (IsIn(c, 0x430, 0x44F)) return c - 0x20;
    if (IsIn(c, 0x450, 0x45F)) return c - 0x50;
    return c;
}

char AnsiOf(wchar_t c) {
    const auto code = static_cast<unsigned>(c);
    if (code < 0x80 || IsIn(c, 0xA0, 0xFF)) return static_cast<char>(code);
    for (std::size_t at = 0; at < Upper1252.size(); ++at) {
        if (Upper1252[at] == code) return static_cast<char>(0x80 + at);
    }
    return '?';
}

} // namespace

std::wstring UpperCase(std::wstring_view text) {
    std::wstring upper(text);
    for (wchar_t& c : upper) c = UpperCaseOf(c);
    return upper;
}

std::string ToAnsi(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t c : text) bytes += AnsiOf(c);
    return bytes;
}

std::wstring FromAnsi(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text +=
            code >= 0x80 && code < 0xA0 ? static_cast<wchar_t>(Upper1252[code - 0x80u]) : static_cast<wchar_t>(code);
    }
    return text;
}
