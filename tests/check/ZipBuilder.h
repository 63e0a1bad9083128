#pragma once

#include <optional>
#include <string>
#include <vector>

/// One entry to be put into an archive.
struct BuiltEntry {
    std::string name; ///< UTF-8; a folder's ends in a slash
    std::string bytes;
};

/// A zip archive with these entries, each protected by the password where there is one.
std::string BuildZip(const std::vector<BuiltEntry>& entries, const std::optional<std::string>& password = {});

/// A backup's archive: each item is an inner archive of its own, named Zip0001.zip and so on.
std::string BuildBackup(const std::vector<std::vector<BuiltEntry>>& items, const std::string& password);
