#pragma once

#include "platform/Files.h"
#include "platform/RuntimeError.h"

#include <map>

/// Files in memory. Names are compared without regard to case; entries come in the order of their upper-case names.
class FakeFiles : public Files {
  public:
    /// Adds a folder and the folders above it.
    void AddFolder(const std::wstring& path);
    /// Adds or replaces a file, and adds the folders above it.
    void AddFile(const std::wstring& path, std::string content = {});
    /// A file that is as large as told, though it holds nothing.
    void AddSizedFile(const std::wstring& path, std::uint64_t sizeBytes);
    /// Takes away a file, or a folder with all below it; read-only or not.
    void Remove(const std::wstring& path);

    void SetReadOnly(const std::wstring& path, bool isReadOnly = true);
    /// Marks an entry that is there as hidden, or as hidden and of the system, or as a link.
    void Hide(const std::wstring& path) { entries_.at(KeyOf(path)).isHidden = true; }
    void HideForTheSystem(const std::wstring& path) { entries_.at(KeyOf(path)).isHiddenForTheSystem = true; }
    void MakeLink(const std::wstring& path) { entries_.at(KeyOf(path)).isLink = true; }
    bool areHiddenShown = false; ///< the user has asked to see hidden files
    /// From now on every use of the entry fails with 70.
    void Deny(const std::wstring& path) { FailWith(path, ErrorNumber::PermissionDenied); }
    /// From now on every use of the path, there or not, fails with `number`.
    void FailWith(const std::wstring& path, ErrorNumber number);
    /// There is no memory for the content of this file.
    std::wstring tooLargeToRead;
    /// Bytes that can still be written to a drive ("E:"); without this, any amount.
    void SetFreeBytes(const std::wstring& drive, std::uint64_t freeBytes);

    /// Every file's path, as it was given.
    std::vector<std::wstring> Paths() const;
    std::vector<std::wstring> flushed;

    bool FileExists(const std::wstring& path) const override;
    bool FolderExists(const std::wstring& path) const override;
    bool IsDirectory(const std::wstring& path) const override;
    std::uint64_t FileSize(const std::wstring& path) const override;
    FolderContents Contents(const std::wstring& folder) const override;
    FolderContents ShownContents(const std::wstring& folder) const override;
    std::vector<std::wstring> Find(const std::wstring& pattern) const override;
    FolderMeasure Measure(const std::wstring& folder, const std::function<void()>& stillMeasuring = {}) const override;
    std::string Read(const std::wstring& path) const override;
    std::unique_ptr<OutputFile> Create(const std::wstring& path) override;
    void Copy(const std::wstring& source, const std::wstring& target) override;
    void Flush(const std::wstring& path) override;
    void Rename(const std::wstring& source, const std::wstring& target) override;
    void Delete(const std::wstring& path) override;
    void RequireDeletable(const std::wstring& path) const override;
    void CreateFolder(const std::wstring& path) override;
    void DeleteFolder(const std::wstring& path) override;

    mutable int measures = 0;

  private:
    friend class FakeOutputFile;

    struct Entry {
        std::wstring path;
        bool isFolder = false;
        bool isReadOnly = false;
        bool isHidden = false;
        bool isHiddenForTheSystem = false;
        bool isLink = false;
        std::string content;
        std::uint64_t sizeBytes = 0;
    };
    using Entries = std::map<std::wstring, Entry>;

    static std::wstring KeyOf(std::wstring path);
    const Entry* At(const std::wstring& path) const;
    const Entry& FileAt(const std::wstring& path) const;
    void RequireFolderAbove(const std::wstring& path) const;
    void CheckFailure(const std::wstring& path) const;
    /// Calls `visit` for every entry directly in the folder.
    template<typename Visit>
    void ForEachIn(const std::wstring& folderKey, Visit visit) const;
    void TakeSpace(const std::wstring& path, std::uint64_t oldBytes, std::uint64_t newBytes);
    void Append(const std::wstring& path, std::string_view bytes);
    void EraseBelow(const std::wstring& folderKey);

    Entries entries_;
    std::map<std::wstring, ErrorNumber> failures_;
    std::map<wchar_t, std::uint64_t> freeBytes_;
};
