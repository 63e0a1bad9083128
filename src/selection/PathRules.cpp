#include "selection/PathRules.h"

bool IsDiskRoot(std::wstring_view path) {
    return path.size() == 3 && path.ends_with(L":\\");
}

std::wstring WithoutTrailingBackslash(std::wstring path) {
    while (path.ends_with(L'\\') && !IsDiskRoot(path)) path.pop_back();
    return path;
}

std::wstring FolderPart(const std::wstring& path) {
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

std::wstring InFolder(const std::wstring& folder, const std::wstring& name) {
    return folder.ends_with(L'\\') ? folder + name : folder + L'\\' + name;
}

std::wstring Without(std::wstring text, std::wstring_view part) {
    std::size_t at = 0;
    while ((at = text.find(part, at)) != std::wstring::npos) text.erase(at, part.size());
    return text;
}
