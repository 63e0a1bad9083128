#include "core/UserProfileMarker.h"

std::wstring ReplaceAll(std::wstring_view text, std::wstring_view what, std::wstring_view replacement) {
    std::wstring result;
    std::size_t from = 0;
    if (!what.empty()) {
        for (std::size_t at = text.find(what); at != std::wstring_view::npos; at = text.find(what, from)) {
            result += text.substr(from, at - from);
            result += replacement;
            from = at + what.size();
        }
    }
    return result += text.substr(from);
}

std::wstring WithUserProfile(std::wstring_view path, std::wstring_view profileFolder) {
    return ReplaceAll(path, UserProfileMarker, profileFolder);
}

std::wstring WithProfileMarker(std::wstring_view path, std::wstring_view profileFolder) {
    return ReplaceAll(path, profileFolder, UserProfileMarker);
}
