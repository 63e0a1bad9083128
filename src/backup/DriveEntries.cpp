#include "backup/DriveEntries.h"

#include <algorithm>

std::wstring DriveEntry(const std::wstring& root, const std::wstring& label) {
    return L"(" + root + L") " + label;
}

std::wstring DrivePart(const std::wstring& entry) {
    return entry.empty() ? std::wstring() : entry.substr(1, 3);
}

int EntryToSelect(const std::vector<std::wstring>& entries, const std::wstring& preselectedRoot) {
    if (entries.empty()) return -1;
    const auto wanted = std::find_if(entries.rbegin(), entries.rend(),
                                     [&](const std::wstring& entry) { return DrivePart(entry) == preselectedRoot; });
    return wanted == entries.rend() ? 0 : static_cast<int>(entries.rend() - wanted) - 1;
}
