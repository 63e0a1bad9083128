#pragma once

#include <optional>
#include <string>
#include <string_view>

/// One name of a path, such that Windows takes it for a file in the folder before it and nothing else: no device, no
/// stream, no other drive. Nothing for a name that climbs.
std::optional<std::wstring> SafeName(std::wstring_view name);

/// A path from an archive or a list, with slashes or backslashes, as a path below a folder: without a drive, a share or
/// a root before it. Nothing for one that climbs; empty for one without a name.
std::optional<std::wstring> SafePath(std::wstring_view path);

/// Where an item that was saved from `path` goes below the target folder: its drive's letter and its folders, such as
/// C\Users\agent. Nothing when the path is none, or climbs.
std::optional<std::wstring> PlaceOfFolder(std::wstring_view path);

/// The same path with a number before the extension of its last name: "a (2).txt".
std::wstring Numbered(const std::wstring& path, int number);
