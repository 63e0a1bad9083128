#pragma once

#include "check/Inspection.h"

#include <memory>
#include <set>

/// Writes the files of a backup below a folder. Nothing is ever overwritten: what is there already, byte for byte,
/// stays and counts; anything else gets a number beside it. A file carries another name until it is whole, and keeps it
/// if it never is. What cannot be written of it, while the target takes other files, is told by its name. Throws what
/// ends all of it: a full disk, or a target that has gone; the file at hand is deleted then.
class Recovery final : public FileTaker {
  public:
    /// `target` is a folder, without a trailing backslash unless it is a root; it is made with all above it.
    Recovery(FileStore& files, const std::wstring& target);
    ~Recovery() override;

    void BeginItem(ItemReport& item, const ZipEntry& entry) override;
    void BeginFile(const ZipEntry& file) override;
    void Take(std::string_view bytes) override;
    void EndFile(const FileOutcome& outcome) override;
    void Describe(std::uint64_t index, const DirectoryRecord& record) override;
    void EndItem() override;

  private:
    /// One file or folder of the item, for what the directory says of it later.
    struct Met {
        std::wstring path; ///< empty: nothing was recovered under it
        std::uint64_t writtenAt = 0;
    };

    std::wstring InTarget(const std::wstring& below) const;
    void MakeFolders(const std::wstring& path);
    void Refuse(const ZipEntry& file);
    template<typename Step>
    void Attempt(Step step);
    void LeaveOut(const RuntimeError& error);
    bool DoesTargetTakeOthers(const RuntimeError& error);
    void Mark(const std::wstring& path, const FileTimes& times, std::uint32_t attributes);
    void MarkAttributes(const std::wstring& path, std::uint32_t attributes);
    bool FindPresent(const ZipEntry& file);
    bool IsStillSame(std::string_view bytes);
    void StartWriting();
    void Keep(const std::wstring& finalPath, bool isDamaged);
    void Discard() noexcept;

    FileStore& files_;
    std::wstring target_;
    std::set<std::wstring> madeFolders_;
    ItemReport* item_ = nullptr;
    std::wstring itemPath_;
    std::wstring place_; ///< the item's folder below the target
    std::vector<Met> met_;

    ZipEntry file_;
    std::wstring path_; ///< where the file is to be; empty while none is taken
    std::wstring workPath_;
    std::unique_ptr<NewFile> output_;
    std::unique_ptr<InputFile> present_;
    std::wstring presentPath_;
    std::uint64_t taken_ = 0;
};

/// What a file that is not whole is called beside its own name.
inline constexpr const wchar_t* DamagedEnding = L".damaged";
