#pragma once

#include "check/Inspection.h"

#include <functional>
#include <memory>
#include <set>

/// Holds the files of a backup against those of this computer, and finds what the backup lacks. Files that cannot be
/// opened here are passed over.
class Comparison final : public FileTaker {
  public:
    /// `onStep` is called now and then while folders are looked through; what it throws comes out.
    Comparison(const FileStore& files, std::function<void()> onStep) : files_(files), onStep_(std::move(onStep)) {}

    void BeginItem(ItemReport& item, const ZipEntry& entry) override;
    void BeginFile(const ZipEntry& file) override;
    void Take(std::string_view bytes) override;
    void EndFile(const FileOutcome& outcome) override;
    void Describe(std::uint64_t, const DirectoryRecord&) override {}
    void EndItem() override;

  private:
    void FindAbsent(const std::wstring& folder, const std::wstring& name);

    const FileStore& files_;
    std::function<void()> onStep_;
    ItemReport* item_ = nullptr;
    std::wstring itemPath_;
    std::uint64_t savedAt_ = 0; ///< when the item in hand was saved; what is younger here was added since
    std::set<std::wstring> saved_;
    ZipEntry file_;
    std::unique_ptr<InputFile> here_;
    std::uint64_t writtenHere_ = 0;
    std::uint64_t compared_ = 0;
    bool isHere_ = false;
    bool differs_ = false;
};
