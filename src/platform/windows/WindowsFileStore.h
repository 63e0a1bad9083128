#pragma once

#include "platform/FileStore.h"

/// The files of the machine.
class WindowsFileStore final : public FileStore {
  public:
    WindowsFileStore();
    std::unique_ptr<InputFile> Open(const std::wstring& path) const override;
    std::optional<StoredEntry> Look(const std::wstring& path) const override;
    std::vector<StoredEntry> List(const std::wstring& folder) const override;
    std::unique_ptr<NewFile> CreateNew(const std::wstring& path) override;
    bool Rename(const std::wstring& path, const std::wstring& newPath) override;
    void Replace(const std::wstring& path, const std::wstring& oldPath) override;
    void MakeFolder(const std::wstring& path) override;
    void Delete(const std::wstring& path) override;
    void Mark(const std::wstring& path, const FileTimes& times, std::uint32_t attributes) override;
    std::uint64_t FreeBytes(const std::wstring& folder) const override;
    std::wstring FullPath(const std::wstring& path) const override;
};
