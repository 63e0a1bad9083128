#include "platform/CodePages.h"

#include <windows.h>

namespace {

std::string ToBytes(std::wstring_view text, UINT codePage) {
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    const int byteCount = WideCharToMultiByte(codePage, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(byteCount), '\0');
    WideCharToMultiByte(codePage, 0, text.data(), length, bytes.data(), byteCount, nullptr, nullptr);
    return bytes;
}

} // namespace

std::string ToUtf8(std::wstring_view text) {
    return ToBytes(text, CP_UTF8);
}

std::wstring FromUtf8(std::string_view bytes) {
    if (bytes.empty()) return {};
    const int byteCount = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), byteCount, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), byteCount, text.data(), length);
    return text;
}

std::string ToOem(std::wstring_view text) {
    return ToBytes(text, CP_OEMCP);
}

unsigned OemCodePage() {
    return GetOEMCP();
}
