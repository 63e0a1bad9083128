#pragma once

#include "platform/Files.h"

class WindowsFiles : public Files {
  public:
    WindowsFiles();
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
};
