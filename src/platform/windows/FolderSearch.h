#pragma once

#include "win32/UniqueHandle.h"

#include <windows.h>

#include <cstdint>
#include <string>

/// A path in the form that the system takes at any length.
std::wstring LongPath(const std::wstring& path);

/// One enumeration of a folder, as fast as the running Windows can make it: no short names, large fetches.
class FolderSearch {
  public:
    /// Starts the search for `pattern` (in the form of LongPath).
    explicit FolderSearch(const std::wstring& pattern);

    /// Moves to the next entry that is neither "." nor ".."; false at the end and when the search could not start.
    bool Next();
    /// Why the search could not start or went no further; 0 at its proper end.
    DWORD Error() const { return error_; }

    const WIN32_FIND_DATAW& Entry() const { return entry_; }
    bool IsFolder() const { return (entry_.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    /// Whether the entry is another name for a place elsewhere (a junction or a symbolic link).
    bool IsLink() const;
    std::uint64_t SizeBytes() const {
        return static_cast<std::uint64_t>(entry_.nFileSizeHigh) << 32 | entry_.nFileSizeLow;
    }

  private:
    bool IsDots() const;

    WIN32_FIND_DATAW entry_ = {};
    UniqueFind search_;
    DWORD error_ = 0;
    bool isFirstPending_ = false;
};
