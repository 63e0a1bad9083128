#include "core/TextDecoding.h"

#include "platform/Text.h"

#include <utility>

namespace {

constexpr char32_t Replacement = 0xFFFD;
constexpr char32_t FirstBeyondOneUnit = 0x10000;
constexpr char32_t FirstHighSurrogate = 0xD800;
constexpr char32_t FirstLowSurrogate = 0xDC00;
constexpr char32_t LastLowSurrogate = 0xDFFF;
constexpr char32_t LastCodePoint = 0x10FFFF;

bool IsSurrogate(char32_t c) {
    return c >= FirstHighSurrogate && c <= LastLowSurrogate;
}

void Append(std::wstring& text, char32_t c) {
    if (sizeof(wchar_t) > 2 || c < FirstBeyondOneUnit) {
        text += static_cast<wchar_t>(c);
        return;
    }
    c -= FirstBeyondOneUnit;
    text += static_cast<wchar_t>(FirstHighSurrogate + (c >> 10));
    text += static_cast<wchar_t>(FirstLowSurrogate + (c & 0x3FF));
}

/// Takes one character off the front; a byte that cannot stand there is one damaged character.
char32_t TakeUtf8(std::string_view& bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    if (lead < 0x80) return lead;
    const int trailCount = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4) return Replacement;
    constexpr char32_t smallest[] = {0x80, 0x800, FirstBeyondOneUnit};
    char32_t c = lead & (0x3Fu >> trailCount);
    for (int taken = 0; taken < trailCount; ++taken) {
        if (bytes.empty() || (static_cast<unsigned char>(bytes.front()) & 0xC0) != 0x80) return Replacement;
        c = c << 6 | (static_cast<unsigned char>(bytes.front()) & 0x3Fu);
        bytes.remove_prefix(1);
    }
    return c < smallest[trailCount - 1] || c > LastCodePoint || IsSurrogate(c) ? Replacement : c;
}

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) Append(text, TakeUtf8(bytes));
    return text;
}

std::wstring FromUtf16(std::string_view bytes, bool isLittleEndian) {
    const std::size_t unitCount = bytes.size() / 2; // half a unit at a damaged end is none
    const auto unit = [&](std::size_t at) -> char32_t {
        const auto first = static_cast<unsigned char>(bytes[2 * at]);
        const auto second = static_cast<unsigned char>(bytes[2 * at + 1]);
        return isLittleEndian ? static_cast<char32_t>(second << 8 | first) : static_cast<char32_t>(first << 8 | second);
    };
    std::wstring text;
    text.reserve(unitCount);
    for (std::size_t at = 0; at < unitCount; ++at) {
        char32_t c = unit(at);
        if (IsSurrogate(c)) {
            const char32_t low = c < FirstLowSurrogate && at + 1 < unitCount ? unit(at + 1) : 0;
            const bool isPair = low >= FirstLowSurrogate && low <= LastLowSurrogate;
            c = isPair ? FirstBeyondOneUnit + ((c - FirstHighSurrogate) << 10) + (low - FirstLowSurrogate)
                       : Replacement;
            if (isPair) ++at;
        }
        Append(text, c);
    }
    return text;
}

} // namespace

std::wstring DecodeText(std::string_view bytes) {
    using namespace std::string_view_literals;
    for (const auto& [mark, isLittleEndian] : {std::pair("\xFF\xFE"sv, true), std::pair("\xFE\xFF"sv, false)}) {
        if (bytes.starts_with(mark)) return FromUtf16(bytes.substr(mark.size()), isLittleEndian);
    }
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    return bytes.starts_with(utf8Mark) ? FromUtf8(bytes.substr(utf8Mark.size())) : FromAnsi(bytes);
}
