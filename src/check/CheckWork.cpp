#include "check/CheckWork.h"

#include "archive/clsListe.h"
#include "check/Comparison.h"
#include "check/DirectoryParts.h"
#include "check/Inspection.h"
#include "check/MediumLost.h"
#include "check/PasswordProbe.h"
#include "check/Recovery.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <algorithm>
#include <limits>
#include <new>

namespace {

constexpr std::uint64_t LargestList = std::uint64_t{64} << 20;
constexpr std::size_t PieceBytes = 65536;

std::wstring WithBackslash(const std::wstring& folder) {
    return folder.ends_with(L'\\') ? folder : folder + L"\\";
}

std::wstring WithoutBackslash(std::wstring path) {
    while (path.size() > 3 && path.ends_with(L'\\')) path.pop_back();
    return path;
}

std::uint64_t PrintOf(InputFile& file) {
    std::string piece(PieceBytes, '\0');
    std::uint64_t print = 0;
    std::uint64_t place = 0;
    while (const std::size_t length = file.ReadAt(place, piece)) {
        print = ListPrint(std::string_view(piece).substr(0, length), print);
        place += length;
    }
    return print;
}

/// How large the wanted inner archives are, as the outer directory has it.
class WantedSizes final : public DirectoryTally {
  public:
    explicit WantedSizes(const NameSet& wanted) : wanted_(wanted) {}
    std::uint64_t Sum() const { return sum_; }

  protected:
    void OnRecord(std::uint64_t, const DirectoryRecord& record) override {
        const std::wstring name = ArchiveOfRow(std::wstring(record.name.begin(), record.name.end()));
        // A directory that is not sane may say anything.
        const std::uint64_t left = std::numeric_limits<std::uint64_t>::max() - sum_;
        if (wanted_.Contains(name)) sum_ += std::min(record.sizeBytes, left);
    }

  private:
    const NameSet& wanted_;
    std::uint64_t sum_ = 0;
};

/// One check or recovery, from the place that was named to the finished report.
class CheckWork {
  public:
    CheckWork(FileStore& files, const CheckRequest& request, const CheckHooks& hooks)
        : files_(files), request_(request), hooks_(hooks) {
        report_.isRecovery = request.target.has_value();
        report_.isComparison = request.isComparison;
    }

    BackupReport Run() {
        try {
            Work();
        } catch (const Stopped&) {
            report_.verdict = Verdict::Stopped;
        } catch (const MediumLost& lost) {
            Fail(Verdict::Unreadable, lost.error);
        } catch (const RuntimeError& error) {
            const bool isFull = error.Number() == static_cast<std::int32_t>(ErrorNumber::DiskFull);
            if (isFull && isWriting_) MeasureRoom();
            Fail(isWriting_ ? isFull ? Verdict::NoRoom : Verdict::NotWritable : Verdict::Unreadable, error);
        } catch (const std::bad_alloc&) {
            Fail(Verdict::Unreadable, RuntimeError(ErrorNumber::OutOfMemory));
        }
        return std::move(report_);
    }

  private:
    void Fail(Verdict verdict, const RuntimeError& error) {
        report_.verdict = verdict;
        report_.failure = error;
    }

    void Work() {
        const BackupPlace place = PlaceOf(files_, request_.place);
        report_.archive = place.archive;
        const bool hasArchive = !place.archive.empty() && IsFile(place.archive);
        report_.hasList = !place.list.empty() && IsFile(place.list);
        if (!hasArchive) {
            report_.verdict = report_.hasList ? Verdict::OlderFormat : Verdict::NoBackup;
            return;
        }
        archive_ = files_.Open(place.archive);
        report_.archiveBytes = archive_->SizeBytes();
        std::deque<ListedItem> rows;
        if (report_.hasList) rows = ReadRows(place.list);
        if (request_.isListOnly) {
            report_.verdict = Verdict::NotChecked;
            Inspection(std::move(rows), report_, {}, {}, hooks_.onItem);
        } else if (!MayWrite()) {
            return;
        } else if (!FindPassphrase()) {
            // Who follows the work has a use for the rows. Elsewhere they would hide that the password is wrong.
            if (hooks_.onItem) Inspection(std::move(rows), report_, {}, request_.wanted.get(), hooks_.onItem);
        } else if (HasRoom()) {
            Walk(std::move(rows));
        }
    }

    bool IsFile(const std::wstring& path) const {
        const auto entry = files_.Look(path);
        return entry && !entry->isFolder;
    }

    std::deque<ListedItem> ReadRows(const std::wstring& path) {
        try {
            const auto list = files_.Open(path);
            if (list->SizeBytes() <= LargestList) {
                report_.listPrint = PrintOf(*list);
                if (TakeKnown()) return {};
                std::string bytes(static_cast<std::size_t>(list->SizeBytes()), '\0');
                bytes.resize(list->ReadAt(0, bytes));
                return ReadBackupList(bytes, request_.profileFolder, report_.texts);
            }
        } catch (const RuntimeError&) {
            // The archive may be whole all the same.
        }
        report_.isListUnreadable = true;
        report_.hasList = false;
        return {};
    }

    bool TakeKnown() {
        BackupReport* known = request_.wanted ? nullptr : request_.known.get();
        if (!known || known->archive != report_.archive || known->listPrint != report_.listPrint) return false;
        report_.texts = std::move(known->texts);
        report_.items = std::move(known->items);
        return true;
    }

    bool FindPassphrase() {
        const auto candidates = PasswordCandidates(request_.password.value_or(L""));
        const ProbeOutcome probe = ProbePassword(*archive_, candidates, [this](std::size_t) { StopIfAsked(); });
        report_.isEncrypted =
            probe.answer == ProbeOutcome::Answer::Opens || probe.answer == ProbeOutcome::Answer::Wrong;
        if (probe.answer == ProbeOutcome::Answer::Wrong) {
            const bool isGiven = request_.password && !request_.password->empty();
            report_.verdict = isGiven ? Verdict::WrongPassword : Verdict::PasswordMissing;
            return false;
        }
        if (probe.candidate) {
            passphrase_ = probe.candidate->bytes;
            report_.isOpenedByFirstWord = probe.candidate->isFirstWord;
        }
        if (hooks_.onPasswordAccepted) hooks_.onPasswordAccepted();
        return true;
    }

    bool MayWrite() {
        if (!request_.target) return true;
        report_.target = WithoutBackslash(files_.FullPath(*request_.target));
        report_.isTargetOnMedium = IsOnMedium(files_, report_.archive, report_.target);
        if (!report_.isTargetOnMedium) return true;
        Fail(Verdict::NotWritable, RuntimeError(ErrorNumber::PermissionDenied));
        return false;
    }

    /// What was free at the beginning is not any more.
    void MeasureRoom() {
        try {
            report_.freeBytes = files_.FreeBytes(report_.target);
        } catch (const RuntimeError&) {
            report_.freeBytes = 0;
        }
    }

    /// A backup is compressed, so its size is the least that its files take.
    bool HasRoom() {
        if (!request_.target) return true;
        report_.neededBytes = WantedBytes();
        isWriting_ = true;
        recovery_ = std::make_unique<Recovery>(files_, report_.target);
        report_.freeBytes = files_.FreeBytes(report_.target);
        if (report_.freeBytes >= report_.neededBytes) return true;
        report_.verdict = Verdict::NoRoom;
        return false;
    }

    std::uint64_t WantedBytes() {
        if (!request_.wanted) return report_.archiveBytes;
        WantedSizes sizes(*request_.wanted);
        try {
            ReadOuterDirectory(*archive_, sizes, [this](std::size_t) { StopIfAsked(); });
        } catch (const RuntimeError&) {
            // Then the disk tells when it is full.
        }
        return std::min(sizes.Sum(), report_.archiveBytes);
    }

    void Walk(std::deque<ListedItem> rows) {
        std::vector<FileTaker*> takers;
        if (recovery_) takers.push_back(recovery_.get());
        Comparison comparison(files_, [this] { StopIfAsked(); });
        if (request_.isComparison) takers.push_back(&comparison);
        Inspection inspection(std::move(rows), report_, takers, request_.wanted.get(), hooks_.onItem);
        report_.walk = WalkBackup(*archive_, passphrase_, inspection, [this](std::size_t bytes) {
            StopIfAsked();
            done_ += bytes;
            if (hooks_.onProgress) hooks_.onProgress(std::min(done_, report_.archiveBytes), report_.archiveBytes);
        });
        inspection.Finish();
        report_.Conclude();
    }

    void StopIfAsked() const {
        if (hooks_.isStopped && hooks_.isStopped()) throw Stopped();
    }

    FileStore& files_;
    const CheckRequest& request_;
    const CheckHooks& hooks_;
    BackupReport report_;
    std::unique_ptr<InputFile> archive_;
    std::unique_ptr<Recovery> recovery_;
    std::optional<std::string> passphrase_;
    std::uint64_t done_ = 0;
    bool isWriting_ = false;
};

} // namespace

BackupPlace PlaceOf(const FileStore& files, const std::wstring& place) {
    if (place.empty()) return {};
    const bool isDriveAlone = place.size() == 2 && place[1] == L':';
    const std::wstring path = WithoutBackslash(files.FullPath(isDriveAlone ? place + L"\\" : place));
    const auto entry = files.Look(path);
    if (!entry) return {};
    const std::wstring folder = WithBackslash(entry->isFolder ? path : path.substr(0, path.find_last_of(L'\\') + 1));
    const bool isList = !entry->isFolder && UpperCase(entry->name) == UpperCase(ControlFileName);
    return {entry->isFolder || isList ? folder + ArchiveName : path, folder + ControlFileName};
}

bool IsOnMedium(const FileStore& files, const std::wstring& archive, const std::wstring& path) {
    const std::wstring folder = archive.substr(0, archive.find_last_of(L'\\') + 1);
    const bool isRoot = folder.size() == 3 && folder.ends_with(L":\\");
    return isRoot && UpperCase(files.FullPath(path)).starts_with(UpperCase(folder.substr(0, 2)));
}

BackupReport RunCheck(FileStore& files, const CheckRequest& request, const CheckHooks& hooks) {
    return CheckWork(files, request, hooks).Run();
}
