#include "archive/MediumPair.h"

#include "archive/clsListe.h"
#include "core/Application.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

namespace {

// Names that nobody gives a file of theirs.
constexpr const wchar_t* ListPart = L"_listFich.lst.~part"; ///< being copied
constexpr const wchar_t* NewList = L"_listFich.lst.~new";   ///< only ever there when both new files are whole
constexpr const wchar_t* NewArchive = L"OKRBACKUP.ZIP.~new";
constexpr const wchar_t* OldList = L"_listFich.lst.~old";
constexpr const wchar_t* OldArchive = L"OKRBACKUP.ZIP.~old";

/// A medium's root by the names in it, looked at once: a plug that is loose must not make a file seem missing in
/// between.
class Root {
  public:
    Root(Files& files, std::wstring path) : files_(files), path_(std::move(path)) {
        for (const std::wstring& name : files_.Contents(path_).files) names_.push_back(UpperCase(name));
    }

    bool Has(const std::wstring& name) const {
        return std::find(names_.begin(), names_.end(), UpperCase(name)) != names_.end();
    }
    void Bring(const std::wstring& source, const std::wstring& name) {
        files_.Copy(source, path_ + name);
        files_.Flush(path_ + name);
        names_.push_back(UpperCase(name));
    }
    void Rename(const std::wstring& from, const std::wstring& to) {
        files_.Rename(path_ + from, path_ + to);
        std::erase(names_, UpperCase(from));
        names_.push_back(UpperCase(to));
    }
    void Delete(const std::wstring& name) {
        if (!Has(name)) return;
        files_.Delete(path_ + name);
        std::erase(names_, UpperCase(name));
    }
    void RequireDeletable(const std::wstring& name) const { files_.RequireDeletable(path_ + name); }
    void Flush(const std::wstring& name) { files_.Flush(path_ + name); }

  private:
    Files& files_;
    std::wstring path_;
    std::vector<std::wstring> names_;
};

void PutAside(Root& root, const std::wstring& name, const std::wstring& asideName) {
    if (!root.Has(name)) return;
    root.Delete(asideName);
    root.Rename(name, asideName);
}

/// Gives the new pair its names. The list goes first and comes last: without one the medium holds no backup.
void Advance(Root& root) {
    PutAside(root, ControlFileName, OldList);
    if (root.Has(NewArchive)) {
        PutAside(root, ArchiveName, OldArchive);
        root.Rename(NewArchive, ArchiveName);
    }
    root.Rename(NewList, ControlFileName);
    root.Flush(ArchiveName);
    root.Flush(ControlFileName);
}

/// Gives the old pair its names back and takes the new files away, the list first: it is what calls for an advance.
void StepBack(Root& root) {
    bool isArchiveOld = root.Has(NewArchive);
    if (!root.Has(ArchiveName) && root.Has(OldArchive)) {
        root.Rename(OldArchive, ArchiveName);
        isArchiveOld = true;
    }
    if (!root.Has(ControlFileName) && root.Has(OldList) && isArchiveOld) root.Rename(OldList, ControlFileName);
    for (const wchar_t* name : {NewList, ListPart, NewArchive}) root.Delete(name);
}

void ClearAway(Root& root) {
    if (!root.Has(ControlFileName) || !root.Has(ArchiveName)) return;
    for (const wchar_t* name : {OldArchive, OldList}) root.Delete(name);
}

/// After a step that failed. What cannot be undone now is left as it is, for the next start to finish.
void UndoExchange(Files& files, const std::wstring& path) {
    try {
        Root root(files, path);
        const bool isArchiveNew = root.Has(NewList) && !root.Has(NewArchive) && root.Has(ArchiveName);
        if (isArchiveNew) root.Rename(ArchiveName, NewArchive);
        StepBack(root);
    } catch (const RuntimeError&) {
        // The failure that led here is the one to be told.
    }
}

} // namespace

void ExchangePair(Files& files, const std::wstring& path, const PairSource& source) {
    Root root(files, path);
    for (const wchar_t* name : {ControlFileName, ArchiveName}) root.RequireDeletable(name);
    try {
        root.Bring(source.archive, NewArchive);
        root.Bring(source.controlFile, ListPart);
        root.Rename(ListPart, NewList);
        Advance(root);
    } catch (const RuntimeError&) {
        UndoExchange(files, path);
        throw;
    }
    ClearAway(root);
}

void FinishExchange(Files& files, const std::wstring& path) {
    Root root(files, path);
    if (root.Has(NewList) && (root.Has(NewArchive) || root.Has(ArchiveName))) {
        Advance(root);
    }
    StepBack(root);
    ClearAway(root);
}

void FinishExchangeIfPossible(Application& app, const std::wstring& root) {
    if (root.empty() || app.machine.drives->Type(root) == DriveType::CdRom) return;
    try {
        if (const std::unique_ptr<Hold> claim = app.machine.drives->Claim(root))
            FinishExchange(*app.machine.files, root);
    } catch (const RuntimeError&) {
        // No medium, or one that takes no writing: it is read as it is.
    }
}

void RequireRoomInFileSystem(const Drives& drives, const std::wstring& root, std::uint64_t sizeBytes) {
    // FAT, FAT12, FAT16 and FAT32 keep a size in 32 bits; exFAT does not.
    const bool isFat = drives.FileSystemName(root).starts_with(L"FAT");
    if (isFat && sizeBytes > std::numeric_limits<std::uint32_t>::max()) throw RuntimeError(ErrorNumber::DiskFull);
}
