#include "platform/windows/discs/ImapiDrive.h"

#include "platform/discs/MasteringCodes.h"
#include "platform/windows/discs/ImapiDriveList.h"

#include <cstdint>

namespace {

/// A disc that was just written or put in is mounted some time later; one that never is must not be woken for ever.
constexpr int MaximumVolumeLooks = 15;
/// A question that a drive never answers must not keep the disc from being shown for ever.
constexpr int MaximumUnfinishedReadings = 8;

/// Whether the drive leaves it open how much of the disc is used.
bool NeedsVolume(const DriveAnswers& answers) {
    if (FAILED(static_cast<HRESULT>(answers.sizesResult))) return true;
    return (answers.mediaState & Mastering::StateOverwriteOnly) && !answers.isHeuristicallyBlank;
}

/// Whether the next write follows what is on the disc and could be a file that its file system cannot hold.
bool IsAddedTo(const DriveAnswers& answers) {
    constexpr std::int32_t twoGibSectors = (1 << 30) / (Mastering::SectorBytes / 2);
    return SUCCEEDED(static_cast<HRESULT>(answers.sizesResult)) && answers.freeSectors >= twoGibSectors &&
           StatusOf(answers.mediaState, answers.isHeuristicallyBlank) == DiscStatus::Open;
}

LONG FileSystemsOn(IDiscRecorder2* recorder) {
    HRESULT result = S_OK;
    const auto image = CreateObject<IFileSystemImage>(CLSID_MsftFileSystemImage, result);
    LONG fileSystems = 0;
    return image && SUCCEEDED(image->IdentifyFileSystemsOnDisc(recorder, &fileSystems)) ? fileSystems : 0;
}

struct FindTraits {
    using Type = HANDLE;
    static Type Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Type find) { FindClose(find); }
};

std::uint64_t RootFileBytes(const std::wstring& root) {
    WIN32_FIND_DATAW found{};
    std::uint64_t sizeBytes = 0;
    const UniqueHandle<FindTraits> find(FindFirstFileW((root + L"*").c_str(), &found));
    for (BOOL isFound = static_cast<bool>(find); isFound; isFound = FindNextFileW(find.Get(), &found))
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            sizeBytes += std::uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow;
    return sizeBytes;
}

} // namespace

HRESULT ImapiDrive::Open() {
    if (data_) return S_OK;
    HRESULT result = S_OK;
    recorder_ = OpenRecorder(id_, result);
    if (!recorder_) return result;
    root_ = RootOf(recorder_.Get());
    data_ = CreateObject<IDiscFormat2Data>(CLSID_MsftDiscFormat2Data, result);
    if (!data_) return result;
    result = data_->put_Recorder(recorder_.Get());
    if (FAILED(result)) Close();
    return result;
}

void ImapiDrive::Close() {
    data_.Reset();
    recorder_.Reset();
}

DriveAnswers ImapiDrive::AskQuickly() const {
    DriveAnswers answers;
    LONG value = 0;
    answers.mediaTypeResult = static_cast<std::uint32_t>(data_->get_CurrentPhysicalMediaType(&value));
    answers.mediaType = value;
    value = 0;
    answers.mediaStateResult = static_cast<std::uint32_t>(data_->get_CurrentMediaStatus(&value));
    answers.mediaState = value;
    return answers;
}

bool ImapiDrive::AskTheRest(DriveAnswers& answers) const {
    bool isWhole = true;
    const auto ask = [&](HRESULT questionResult) {
        if (IsPassing(static_cast<std::uint32_t>(questionResult))) isWhole = false;
        return questionResult;
    };
    LONG total = 0;
    LONG free = 0;
    HRESULT result = ask(data_->get_TotalSectorsOnMedia(&total));
    if (SUCCEEDED(result)) result = ask(data_->get_FreeSectorsOnMedia(&free));
    answers.sizesResult = static_cast<std::uint32_t>(result);
    answers.totalSectors = total;
    answers.freeSectors = free;
    VARIANT_BOOL isSupported = VARIANT_FALSE;
    if (SUCCEEDED(ask(data_->IsCurrentMediaSupported(recorder_.Get(), &isSupported))))
        answers.isSupported = isSupported != VARIANT_FALSE;
    if (answers.mediaState & Mastering::StateOverwriteOnly) {
        VARIANT_BOOL isBlank = VARIANT_FALSE;
        answers.isHeuristicallyBlank =
            SUCCEEDED(ask(data_->get_MediaHeuristicallyBlank(&isBlank))) && isBlank != VARIANT_FALSE;
    }
    if (IsAddedTo(answers)) answers.fileSystems = FileSystemsOn(recorder_.Get());
    return isWhole;
}

bool ImapiDrive::IsReadFor(const DriveAnswers& quickAnswers) const {
    if (!answers_) return false;
    // Another program's write locks the drive; the disc that was read before is still in. An empty drive that does not
    // answer is loading one.
    if (IsPassing(quickAnswers.mediaTypeResult) || IsPassing(quickAnswers.mediaStateResult))
        return snapshot_.disc.presence == DiscPresence::Ready;
    return !mayHaveChanged_ && quickAnswers.mediaTypeResult == answers_->mediaTypeResult &&
           quickAnswers.mediaType == answers_->mediaType &&
           quickAnswers.mediaStateResult == answers_->mediaStateResult &&
           quickAnswers.mediaState == answers_->mediaState;
}

const DriveSnapshot& ImapiDrive::Read() {
    if (FAILED(Open())) {
        Forget();
        return snapshot_;
    }
    DriveAnswers answers = AskQuickly();
    // A writer that was unplugged and plugged in again answers through a new object only.
    if (answers.mediaTypeResult == Mastering::HandleLost || answers.mediaTypeResult == Mastering::DeviceGone) {
        Close();
        Forget();
        return snapshot_;
    }
    const bool isHeld = IsPassing(answers.mediaTypeResult) || IsPassing(answers.mediaStateResult);
    // Another program may have written meanwhile, or somebody put in another disc of the same kind.
    if (isHeld) mayHaveChanged_ = true;
    if (IsReadFor(answers)) {
        if (volumeLooks_ > 0 && !isHeld) LookForVolume();
        return snapshot_;
    }
    snapshot_.disc = DiscBehind(answers, 0);
    snapshot_.speeds.clear();
    answers_.reset();
    if (snapshot_.disc.presence == DiscPresence::NotAnswering) return snapshot_;
    if (!AskTheRest(answers) && ++unfinishedReadings_ < MaximumUnfinishedReadings) {
        Forget();
        return snapshot_;
    }
    unfinishedReadings_ = 0;
    mayHaveChanged_ = false;
    answers_ = answers;
    volumeLooks_ = NeedsVolume(answers) ? MaximumVolumeLooks : 0;
    snapshot_.disc = DiscBehind(answers, 0);
    if (volumeLooks_ > 0) LookForVolume();
    if (snapshot_.disc.presence == DiscPresence::Ready) snapshot_.speeds = AskSpeeds();
    return snapshot_;
}

void ImapiDrive::LookForVolume() {
    const std::uint64_t volumeBytes = MountedVolumeBytes(DiscBehind(*answers_, 0).totalBytes);
    volumeLooks_ = volumeBytes != 0 ? 0 : volumeLooks_ - 1;
    snapshot_.disc = DiscBehind(*answers_, volumeBytes);
}

std::uint64_t ImapiDrive::MountedVolumeBytes(std::uint64_t discBytes) const {
    ULARGE_INTEGER total{};
    ULARGE_INTEGER free{};
    if (root_.empty() || !GetDiskFreeSpaceExW(root_.c_str(), nullptr, &total, &free)) return 0;
    // A mastered disc has no free space. Where the letter leads to a larger volume, such as a folder that stands for
    // the disc, the files are what is on it.
    if (free.QuadPart == 0 || total.QuadPart <= discBytes) return total.QuadPart - free.QuadPart;
    return RootFileBytes(root_);
}

std::vector<std::uint32_t> ImapiDrive::AskSpeeds() const {
    std::vector<std::uint32_t> speeds;
    ComArray array;
    if (FAILED(data_->get_SupportedWriteSpeeds(array.Receive()))) return speeds;
    array.ForEach(VT_UI4, [&](const VARIANT& speed) { speeds.push_back(speed.ulVal); });
    return speeds;
}
