#pragma once

#include <string>
#include <vector>

/// How a drive stands in the list of drives, such as "(E:\) Disque amovible".
std::wstring DriveEntry(const std::wstring& root, const std::wstring& label);

/// The drive root of an entry of that form; empty for an empty entry.
std::wstring DrivePart(const std::wstring& entry);

/// The entry to select: that of `preselectedRoot`, else the first; -1 when there is none.
int EntryToSelect(const std::vector<std::wstring>& entries, const std::wstring& preselectedRoot);
