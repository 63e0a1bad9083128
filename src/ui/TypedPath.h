#pragma once

#include <algorithm>
#include <optional>
#include <string>

namespace ui {

/// What a user typed as a path, when it names a place from the root of a drive or of a share on; nothing otherwise. It
/// may be typed with slashes, and a drive without any.
inline std::optional<std::wstring> WholePath(std::wstring typed) {
    std::replace(typed.begin(), typed.end(), L'/', L'\\');
    if (typed.starts_with(L"\\\\")) {
        const std::size_t server = typed.find(L'\\', 2);
        const bool hasShare = server != std::wstring::npos && server > 2 && server + 1 < typed.size();
        return hasShare ? std::optional(typed) : std::nullopt;
    }
    const bool hasDrive = typed.size() > 1 && typed[1] == L':' &&
                          ((typed[0] >= L'A' && typed[0] <= L'Z') || (typed[0] >= L'a' && typed[0] <= L'z'));
    if (!hasDrive) return std::nullopt;
    if (typed.size() == 2) return typed + L'\\';
    return typed[2] == L'\\' ? std::optional(typed) : std::nullopt;
}

} // namespace ui
