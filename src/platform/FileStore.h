#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Moments of a file in units of 100 nanoseconds since 1601, UTC; 0 is not known.
struct FileTimes {
    std::uint64_t created = 0;
    std::uint64_t written = 0;
};

/// One entry of a folder, or what stands under a path.
struct StoredEntry {
    std::wstring name;
    bool isFolder = false;
    bool isLink = false; ///< another name for a place elsewhere
    std::uint64_t sizeBytes = 0;
    FileTimes times;
};

/// A file open for reading at any place.
class InputFile {
  public:
    virtual ~InputFile() = default;
    virtual std::uint64_t SizeBytes() const = 0;
    /// Fills `buffer` from `offset` on and gives how many bytes there were: fewer at the end of the file, 0 behind it.
    /// Throws 57 where the device cannot read the place, 71 and others when it has gone.
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<char> buffer) = 0;
};

/// A file that is being made. Its destructor closes it and leaves what was written.
class NewFile {
  public:
    virtual ~NewFile() = default;
    /// Throws 61 (disk full), 57, 71 or 75.
    virtual void Write(std::string_view bytes) = 0;
    /// Closes it. Throws what the last bytes met.
    virtual void Close() = 0;
};

/// Files as a check reads them and a recovery makes them: large, piece by piece, and never one over another. Paths are
/// plain strings with backslashes, of any length. Failures are run-time errors, as those of `Files`.
class FileStore {
  public:
    virtual ~FileStore() = default;
    virtual std::unique_ptr<InputFile> Open(const std::wstring& path) const = 0;
    /// What stands under a path; nothing when there is nothing. Throws when that cannot be told.
    virtual std::optional<StoredEntry> Look(const std::wstring& path) const = 0;
    /// The entries of a folder, "." and ".." left out. Throws 76 for a missing folder.
    virtual std::vector<StoredEntry> List(const std::wstring& folder) const = 0;
    /// Makes a file; nothing when something of that name is there already.
    virtual std::unique_ptr<NewFile> CreateNew(const std::wstring& path) = 0;
    /// Gives a file another name in its folder; false, and nothing is done, when that name is taken.
    virtual bool Rename(const std::wstring& path, const std::wstring& newPath) = 0;
    /// Gives a file the name of another one in its folder, which goes in the same step. Both stay where that throws.
    virtual void Replace(const std::wstring& path, const std::wstring& oldPath) = 0;
    /// Makes a folder; one that is there already is well.
    virtual void MakeFolder(const std::wstring& path) = 0;
    virtual void Delete(const std::wstring& path) = 0;
    /// Sets the times that are known and, of the attributes, read-only (1), hidden (2), system (4) and archive (32);
    /// where none of these is given, they stay.
    virtual void Mark(const std::wstring& path, const FileTimes& times, std::uint32_t attributes) = 0;
    /// Bytes that the user may still write to the disk of a folder.
    virtual std::uint64_t FreeBytes(const std::wstring& folder) const = 0;
    /// The whole path of one that may be relative.
    virtual std::wstring FullPath(const std::wstring& path) const = 0;
};
