// The encodings of archives and reports where there is no Windows: UTF-8, and code page 850 for the archiver's names.
#include "platform/CodePages.h"

#include <clocale>

namespace {

/// The library that reads archives converts names by way of the locale.
[[maybe_unused]] const bool isLocaleSet = std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;

constexpr wchar_t Replacement = 0xFFFD;
/// Bytes 0x80 to 0x9F of code page 850.
constexpr std::u16string_view Upper850 = u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜø£Ø×ƒ";

int FollowersOf(unsigned char lead) {
    if (lead < 0x80) return 0;
    if (lead >= 0xC2 && lead < 0xE0) return 1;
    if (lead >= 0xE0 && lead < 0xF0) return 2;
    return lead >= 0xF0 && lead < 0xF5 ? 3 : -1;
}

} // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t letter : text) {
        auto code = static_cast<unsigned>(letter);
        if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) code = Replacement;
        if (code < 0x80) {
            bytes += static_cast<char>(code);
            continue;
        }
        const int followers = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        const unsigned lead = followers == 1 ? 0xC0 : followers == 2 ? 0xE0 : 0xF0;
        bytes += static_cast<char>(lead | code >> (6 * followers));
        for (int at = followers - 1; at >= 0; --at) bytes += static_cast<char>(0x80 | (code >> (6 * at) & 0x3F));
    }
    return bytes;
}

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        const int followers = FollowersOf(lead);
        unsigned code = followers <= 0 ? lead : lead & (0x3Fu >> followers);
        int taken = 0;
        while (taken < followers && at + 1 + taken < bytes.size() && (bytes[at + 1 + taken] & 0xC0) == 0x80) {
            code = code << 6 | (static_cast<unsigned char>(bytes[at + 1 + taken]) & 0x3Fu);
            ++taken;
        }
        text += followers < 0 || taken < followers ? Replacement : static_cast<wchar_t>(code);
        at += 1 + static_cast<std::size_t>(taken);
    }
    return text;
}

std::string ToOem(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t letter : text) {
        const auto at = Upper850.find(static_cast<char16_t>(letter));
        if (letter < 0x80)
            bytes += static_cast<char>(letter);
        else
            bytes += at == std::u16string_view::npos ? '?' : static_cast<char>(0x80 + at);
    }
    return bytes;
}

unsigned OemCodePage() {
    return 850;
}
