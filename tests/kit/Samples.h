#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace kit {

/// Documents such as a field agent has: accents and commas in names, an empty file, a dot file, an empty folder.
void WriteDocuments(const std::filesystem::path& folder);
/// One file whose size is `megabytes`.
void WriteLargeFile(const std::filesystem::path& folder, int megabytes);
/// One folder with `count` files of up to 3,000 bytes.
void WriteSmallFiles(const std::filesystem::path& folder, int count);

/// Everything below a folder by its path from there: a number made from a file's content, 0 for a folder.
using Snapshot = std::map<std::wstring, std::uint64_t>;
Snapshot SnapshotOf(const std::filesystem::path& folder);
/// What differs, in words; empty when nothing does.
std::wstring Differences(const Snapshot& before, const Snapshot& after);

} // namespace kit
