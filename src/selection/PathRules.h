#pragma once

#include <string>
#include <string_view>

/// What follows the path of a folder that the user added, where it is shown.
inline constexpr std::wstring_view AllFiles = L"\\*.*";

/// Whether the path is a disk root such as "C:\".
bool IsDiskRoot(std::wstring_view path);

/// The path without backslashes at its end; a disk root keeps its own.
std::wstring WithoutTrailingBackslash(std::wstring path);

/// The path up to and including its last "\"; empty when it has none.
std::wstring FolderPart(const std::wstring& path);

/// `name` in `folder`, which may or may not end with a backslash.
std::wstring InFolder(const std::wstring& folder, const std::wstring& name);

/// The text without any `part`.
std::wstring Without(std::wstring text, std::wstring_view part);
