#pragma once

#include <string>

/// Private profile (INI) files, which are read only.
class SettingsFiles {
  public:
    virtual ~SettingsFiles() = default;
    /// A value, cut to 254 characters; empty when the file, the section or the key is missing.
    virtual std::wstring Value(const std::wstring& file, const std::wstring& section,
                               const std::wstring& key) const = 0;
};
