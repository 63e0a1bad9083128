#pragma once

#include "platform/FileStore.h"
#include "platform/RuntimeError.h"

#include <map>

/// Files in memory, as a check meets them. Names are compared without regard to case.
class FakeFileStore : public FileStore {
  public:
    struct Kept {
        std::wstring path;
        bool isFolder = false;
        std::string bytes;
        FileTimes times;
        std::uint32_t attributes = 0;
    };

    /// Adds a file and the folders above it.
    void Add(const std::wstring& path, std::string bytes, FileTimes times = {});
    /// The bytes of a file; nothing when there is none.
    std::optional<std::string> BytesOf(const std::wstring& path) const;
    const Kept* Find(const std::wstring& path) const;
    /// The paths of all files.
    std::vector<std::wstring> Paths() const;

    std::uint64_t freeBytes = 1ull << 40;
    /// A disk whose files may not be larger calls itself full.
    std::uint64_t largestFileBytes = ~std::uint64_t{0};
    /// Moments before this one are refused, as on a disk whose calendar begins later.
    std::uint64_t earliestTime = 0;
    /// Reading at or behind this place of any file fails with `readFailure`.
    std::optional<std::uint64_t> failsAt;
    ErrorNumber readFailure = ErrorNumber::DiskNotReady;

    std::unique_ptr<InputFile> Open(const std::wstring& path) const override;
    std::optional<StoredEntry> Look(const std::wstring& path) const override;
    std::vector<StoredEntry> List(const std::wstring& folder) const override;
    std::unique_ptr<NewFile> CreateNew(const std::wstring& path) override;
    bool Rename(const std::wstring& path, const std::wstring& newPath) override;
    void Replace(const std::wstring& path, const std::wstring& oldPath) override;
    void MakeFolder(const std::wstring& path) override;
    void Delete(const std::wstring& path) override;
    void Mark(const std::wstring& path, const FileTimes& times, std::uint32_t attributes) override;
    std::uint64_t FreeBytes(const std::wstring&) const override { return freeBytes; }
    std::wstring FullPath(const std::wstring& path) const override { return path; }

  private:
    friend class FakeNewFile;
    void RequireFolderOf(const std::wstring& path) const;
    std::map<std::wstring, Kept> kept_;
};
