#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The direct entries of a folder: names only, in the system's order.
struct FolderContents {
    std::vector<std::wstring> files;
    std::vector<std::wstring> folders;
};

struct FolderMeasure {
    std::uint64_t fileCount = 0;
    std::uint64_t sizeBytes = 0;
};

/// A file being written; closed by its destructor, and by `Close`, which reports what the last bytes met.
class OutputFile {
  public:
    virtual ~OutputFile() = default;
    /// Appends the bytes. Throws 61 (disk full), 57 or 75.
    virtual void Write(std::string_view bytes) = 0;
    /// Writes what is buffered and closes. Throws as `Write`.
    virtual void Close() = 0;
};

/// Files and folders. Paths are plain strings with backslashes.
/// Failures are run-time errors: 53 file not found, 76 path not found, 70 permission denied, 61 disk full,
/// 71 disk not ready, 57 device I/O error, 75 for the rest. What another program holds for a moment only, as scanners
/// do with fresh files, is tried again for about half a second before that is a failure.
class Files {
  public:
    virtual ~Files() = default;
    /// False for a folder, for a name with a backslash behind, and where the system cannot tell.
    virtual bool FileExists(const std::wstring& path) const = 0;
    /// With or without a backslash behind. False for a file, and where the system cannot tell.
    virtual bool FolderExists(const std::wstring& path) const = 0;
    /// The shell's directory test: false for anything that is missing.
    virtual bool IsDirectory(const std::wstring& path) const = 0;
    /// Bytes. Throws 53 for a folder too.
    virtual std::uint64_t FileSize(const std::wstring& path) const = 0;
    virtual FolderContents Contents(const std::wstring& folder) const = 0;
    /// Of the contents, what the user's Explorer shows: no link, nothing that is hidden and of the system, and what is
    /// merely hidden only when the user has asked to see it. Throws as `Contents`.
    virtual FolderContents ShownContents(const std::wstring& folder) const = 0;
    /// Names, files and folders alike ("." and ".." left out), that match a pattern such as "C:\Data\Rep*".
    virtual std::vector<std::wstring> Find(const std::wstring& pattern) const = 0;
    /// Files and bytes below a folder, sub-folders included. Names that begin with "." are skipped, links are not
    /// followed, unreadable folders count as empty. A missing folder measures zero. `stillMeasuring`, where given, is
    /// called for every folder and every thousand files or so.
    virtual FolderMeasure Measure(const std::wstring& folder,
                                  const std::function<void()>& stillMeasuring = {}) const = 0;
    /// The whole file.
    virtual std::string Read(const std::wstring& path) const = 0;
    /// Creates or truncates a file.
    virtual std::unique_ptr<OutputFile> Create(const std::wstring& path) = 0;
    /// Copies over whatever `target` was. On a disk that is full (61) nothing of the target is left.
    virtual void Copy(const std::wstring& source, const std::wstring& target) = 0;
    /// Forces what the system still holds of the file to the device.
    virtual void Flush(const std::wstring& path) = 0;
    /// Gives a file another name on the same drive, read-only or not; it has it on the device when the call returns.
    /// Throws 75 when the name is taken; both files are then as they were.
    virtual void Rename(const std::wstring& source, const std::wstring& target) = 0;
    /// Deletes a file. Throws 70 when it is read-only or in use.
    virtual void Delete(const std::wstring& path) = 0;
    /// Throws 70 when the file could not be deleted at this moment; nothing when it could, or is not there.
    virtual void RequireDeletable(const std::wstring& path) const = 0;
    /// Creates one folder. Throws 76 when the one above it is not there, 75 when the name is taken.
    virtual void CreateFolder(const std::wstring& path) = 0;
    /// Deletes the folder with all it holds, read-only entries excepted (70 when one is met). Of a link, the folder
    /// itself or one in it, only the link goes.
    virtual void DeleteFolder(const std::wstring& path) = 0;
};
