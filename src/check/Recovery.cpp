#include "check/Recovery.h"

#include "check/TargetNames.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr int MostNumbers = 100000;
constexpr std::size_t MostFoldersKept = 1000;
constexpr std::size_t CompareBytes = 65536;
constexpr std::uint64_t PlentyBytes = std::uint64_t{16} << 20;
constexpr const wchar_t* TrialName = L"OKRBACKUP.damaged";

std::wstring FolderOf(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L'\\');
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

} // namespace

Recovery::Recovery(FileStore& files, const std::wstring& target) : files_(files), target_(target) {
    MakeFolders(target_);
}

Recovery::~Recovery() {
    Discard();
}

void Recovery::BeginItem(ItemReport& item, const ZipEntry&) {
    item_ = &item;
    met_.clear();
    itemPath_ = item.path;
    const auto place = PlaceOfFolder(FolderOf(itemPath_) + L"\\");
    place_ = itemPath_.empty() || !place ? SafePath(std::wstring(item.archive)).value_or(L"_") : *place;
}

void Recovery::BeginFile(const ZipEntry& file) {
    file_ = file;
    path_.clear();
    taken_ = 0;
    // Under the folders of an item that it does not belong to, nobody would look for it.
    const std::wstring meant = LastName(itemPath_);
    const std::wstring top = file.name.substr(0, file.name.find(L'/'));
    if (met_.empty() && item_->number > 0 && !meant.empty() && !IsNameMeant(meant, top))
        place_ = SafePath(std::wstring(item_->archive)).value_or(L"_");
    met_.push_back({{}, file.writtenAt});
    const bool isAbsolute = file.name.starts_with(L'/') || (file.name.size() > 1 && file.name[1] == L':');
    const auto below = SafePath(file.name);
    if (!below || below->empty() || isAbsolute || file.isLink) {
        Refuse(file);
        return;
    }
    const std::wstring path = InTarget(place_ + L"\\" + *below);
    Attempt([&] {
        if (file.isFolder) {
            MakeFolders(path);
            met_.back().path = path;
            return;
        }
        MakeFolders(FolderOf(path));
        path_ = path;
        if (!FindPresent(file)) StartWriting();
    });
}

void Recovery::Take(std::string_view bytes) {
    if (path_.empty()) return;
    Attempt([&] {
        if (!present_ || !IsStillSame(bytes)) {
            if (present_) StartWriting();
            output_->Write(bytes);
        }
        taken_ += bytes.size();
    });
}

void Recovery::EndFile(const FileOutcome& outcome) {
    if (path_.empty()) return;
    const bool isWhole = outcome.state == FileState::Whole;
    if (present_ && isWhole && taken_ == present_->SizeBytes()) {
        met_.back().path = presentPath_;
        ++item_->presentFiles;
    } else if (taken_ == 0 && !isWhole) {
        // Nothing of it could be read: nothing is kept of it.
        Discard();
    } else {
        Attempt([&] {
            if (present_) StartWriting();
            Keep(isWhole ? path_ : path_ + DamagedEnding, !isWhole);
        });
    }
    present_.reset();
    path_.clear();
}

void Recovery::Describe(std::uint64_t index, const DirectoryRecord& record) {
    if (index >= met_.size() || met_[index].path.empty()) return;
    const FileTimes times{record.created, record.written != 0 ? record.written : met_[index].writtenAt};
    Mark(met_[index].path, times, record.attributes);
    met_[index].path.clear();
}

void Recovery::EndItem() {
    // What the directory did not describe, because it could not be read, has the time from the entry itself.
    for (const Met& met : met_) {
        if (!met.path.empty() && met.writtenAt != 0) Mark(met.path, {0, met.writtenAt}, 0);
    }
    met_.clear();
}

std::wstring Recovery::InTarget(const std::wstring& below) const {
    return target_.ends_with(L'\\') ? target_ + below : target_ + L"\\" + below;
}

void Recovery::MakeFolders(const std::wstring& path) {
    if (path.size() <= 3 || madeFolders_.contains(path)) return;
    const std::wstring above = FolderOf(path);
    // Neither a drive nor a share can be made.
    const bool isShareRoot = path.starts_with(L"\\\\") && std::count(path.begin(), path.end(), L'\\') <= 3;
    if (isShareRoot) return;
    const auto entry = files_.Look(path);
    if (entry && !entry->isFolder) throw RuntimeError(ErrorNumber::PathFileAccessError);
    if (!entry) {
        MakeFolders(above);
        files_.MakeFolder(path);
    }
    // They are there: one that is forgotten is found again.
    if (madeFolders_.size() == MostFoldersKept) madeFolders_.clear();
    madeFolders_.insert(path);
}

void Recovery::Refuse(const ZipEntry& file) {
    item_->Add({FileFinding::What::Refused, file.name, 0, {}});
}

/// A step for one entry, whose failure is not that of all others.
template<typename Step>
void Recovery::Attempt(Step step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        LeaveOut(error);
    }
}

/// Called while the error is handled: it goes on when the target is the reason.
void Recovery::LeaveOut(const RuntimeError& error) {
    if (!DoesTargetTakeOthers(error)) throw;
    Discard();
    present_.reset();
    path_.clear();
    met_.back().path.clear();
    // A disk with room whose files may not be as large as this one calls itself full.
    const bool isTooLarge = error.Number() == static_cast<std::int32_t>(ErrorNumber::DiskFull);
    const auto number = isTooLarge ? static_cast<std::int32_t>(ErrorNumber::Overflow) : error.Number();
    item_->Add({FileFinding::What::NotWritten, file_.name, static_cast<std::uint64_t>(number), {}});
}

bool Recovery::DoesTargetTakeOthers(const RuntimeError& error) {
    try {
        switch (static_cast<ErrorNumber>(error.Number())) {
        case ErrorNumber::DeviceIoError:
        case ErrorNumber::DiskNotReady:
        case ErrorNumber::OutOfMemory:
            return false;
        case ErrorNumber::DiskFull:
            return files_.FreeBytes(target_) >= PlentyBytes;
        default:
            break;
        }
        for (int number = 1; number <= MostNumbers; ++number) {
            const std::wstring path = InTarget(number == 1 ? TrialName : Numbered(TrialName, number));
            const auto trial = files_.CreateNew(path);
            if (!trial) continue;
            trial->Close();
            files_.Delete(path);
            return true;
        }
    } catch (const RuntimeError&) {
        // It takes nothing any more.
    }
    return false;
}

/// A disk may have no such time. The file is whole all the same.
void Recovery::Mark(const std::wstring& path, const FileTimes& times, std::uint32_t attributes) {
    try {
        files_.Mark(path, times, attributes);
    } catch (const RuntimeError& error) {
        if (!DoesTargetTakeOthers(error)) throw;
        std::wstring name = path.substr(InTarget(place_).size() + 1);
        std::replace(name.begin(), name.end(), L'\\', L'/');
        item_->Add({FileFinding::What::NotMarked, name, static_cast<std::uint64_t>(error.Number()), {}});
        if (attributes != 0) MarkAttributes(path, attributes);
    }
}

void Recovery::MarkAttributes(const std::wstring& path, std::uint32_t attributes) {
    try {
        files_.Mark(path, {}, attributes);
    } catch (const RuntimeError&) {
        // That it lacks something is told already.
    }
}

/// Looks for the file where an earlier recovery, or nobody, has put it.
bool Recovery::FindPresent(const ZipEntry& file) {
    for (int number = 1; file.sizeBytes; ++number) {
        const std::wstring path = number == 1 ? path_ : Numbered(path_, number);
        const auto entry = files_.Look(path);
        if (!entry) return false;
        if (entry->isFolder || entry->sizeBytes != *file.sizeBytes) continue;
        try {
            present_ = files_.Open(path);
        } catch (const RuntimeError&) {
            // Who holds it may be writing it: what is in it cannot be relied on.
            continue;
        }
        presentPath_ = path;
        return true;
    }
    return false;
}

bool Recovery::IsStillSame(std::string_view bytes) {
    std::array<char, CompareBytes> other;
    std::uint64_t place = taken_;
    while (!bytes.empty()) {
        const std::size_t length = std::min(bytes.size(), other.size());
        if (present_->ReadAt(place, {other.data(), length}) != length) return false;
        if (bytes.substr(0, length) != std::string_view(other.data(), length)) return false;
        bytes.remove_prefix(length);
        place += length;
    }
    return true;
}

/// Opens a new file under a name that nobody takes for a whole one, and gives it what was the same so far.
void Recovery::StartWriting() {
    for (int number = 1; !output_; ++number) {
        if (number > MostNumbers) throw RuntimeError(ErrorNumber::PathFileAccessError);
        const std::wstring path = (number == 1 ? path_ : Numbered(path_, number)) + DamagedEnding;
        output_ = files_.CreateNew(path);
        if (output_) workPath_ = path;
    }
    const std::unique_ptr<InputFile> same = std::move(present_);
    std::array<char, CompareBytes> bytes;
    for (std::uint64_t place = 0; same && place < taken_;) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), taken_ - place));
        const std::size_t length = same->ReadAt(place, {bytes.data(), wanted});
        if (length == 0) throw RuntimeError(ErrorNumber::DeviceIoError);
        output_->Write({bytes.data(), length});
        place += length;
    }
}

void Recovery::Keep(const std::wstring& finalPath, bool isDamaged) {
    output_->Close();
    output_.reset();
    std::wstring path = workPath_;
    if (!isDamaged) {
        for (int number = 1;; ++number) {
            path = number == 1 ? finalPath : Numbered(finalPath, number);
            if (files_.Rename(workPath_, path)) break;
            if (number > MostNumbers) throw RuntimeError(ErrorNumber::PathFileAccessError);
        }
    }
    if (path != path_) item_->Add({FileFinding::What::KeptAs, file_.name, taken_, path});
    workPath_.clear();
    met_.back().path = path;
    if (!isDamaged) ++item_->recoveredFiles;
}

void Recovery::Discard() noexcept {
    output_.reset();
    if (workPath_.empty()) return;
    try {
        files_.Delete(std::exchange(workPath_, {}));
    } catch (const RuntimeError&) {
        // The target has gone. Its name says that the file is not whole.
    }
}
