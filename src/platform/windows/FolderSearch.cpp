#include "platform/windows/FolderSearch.h"

#include <atomic>

namespace {

// Values that Windows 7 brought; older ones refuse them.
constexpr auto BasicInfo = static_cast<FINDEX_INFO_LEVELS>(1);
constexpr DWORD LargeFetch = 2;

constexpr std::size_t LongestPlainPath = 240;

std::atomic<bool> canFetchLarge = true;

} // namespace

std::wstring LongPath(const std::wstring& path) {
    if (path.size() < LongestPlainPath || path.starts_with(L"\\\\?\\")) return path;
    if (path.size() > 2 && path[1] == L':' && path[2] == L'\\') return L"\\\\?\\" + path;
    if (path.starts_with(L"\\\\")) return L"\\\\?\\UNC" + path.substr(1);
    return path;
}

FolderSearch::FolderSearch(const std::wstring& pattern) {
    if (canFetchLarge) {
        search_.Reset(
            FindFirstFileExW(pattern.c_str(), BasicInfo, &entry_, FindExSearchNameMatch, nullptr, LargeFetch));
        if (!search_ && GetLastError() == ERROR_INVALID_PARAMETER) canFetchLarge = false;
    }
    if (!canFetchLarge) {
        search_.Reset(
            FindFirstFileExW(pattern.c_str(), FindExInfoStandard, &entry_, FindExSearchNameMatch, nullptr, 0));
    }
    isFirstPending_ = static_cast<bool>(search_);
    if (!isFirstPending_) error_ = GetLastError();
}

bool FolderSearch::Next() {
    while (search_) {
        if (!isFirstPending_ && !FindNextFileW(search_.Get(), &entry_)) {
            const DWORD error = GetLastError();
            error_ = error == ERROR_NO_MORE_FILES ? 0 : error;
            search_.Reset();
            return false;
        }
        isFirstPending_ = false;
        if (!IsDots()) return true;
    }
    return false;
}

bool FolderSearch::IsDots() const {
    const wchar_t* name = entry_.cFileName;
    return name[0] == L'.' && (name[1] == 0 || (name[1] == L'.' && name[2] == 0));
}

bool FolderSearch::IsLink() const {
    // Files kept online and the like carry a tag too, but lie where they are named. No tag at all is an unknown one.
    const DWORD tag = entry_.dwReserved0;
    return (entry_.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (tag == 0 || IsReparseTagNameSurrogate(tag));
}
