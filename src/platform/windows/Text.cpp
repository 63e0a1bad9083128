#include "platform/Text.h"

#include <windows.h>

std::wstring UpperCase(std::wstring_view text) {
    if (text.empty()) return {};
    std::wstring upper(text.size(), L'\0');
    const int length = static_cast<int>(text.size());
    LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_UPPERCASE, text.data(), length, upper.data(), length);
    return upper;
}

std::string ToAnsi(std::wstring_view text) {
    if (text.empty()) return {};
    // A letter that only resembles the right one would make the path of another file. UTF-8 lacks none and takes no
    // flag.
    const DWORD flags = GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int length = static_cast<int>(text.size());
    const int byteCount = WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(byteCount), '\0');
    WideCharToMultiByte(CP_ACP, flags, text.data(), length, bytes.data(), byteCount, nullptr, nullptr);
    return bytes;
}

std::wstring FromAnsi(std::string_view bytes) {
    if (bytes.empty()) return {};
    const int byteCount = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), byteCount, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), byteCount, text.data(), length);
    return text;
}
