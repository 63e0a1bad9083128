#include "platform/windows/discs/ImapiDrive.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <cstdint>

namespace {

bool IsResult(HRESULT result, Mastering::Result code) {
    return static_cast<std::uint32_t>(result) == code;
}

std::wstring Trimmed(const std::wstring& text) {
    const auto first = text.find_first_not_of(L' ');
    if (first == std::wstring::npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

template<class Object>
std::wstring TextOf(Object* object, HRESULT (STDMETHODCALLTYPE Object::*property)(BSTR*)) {
    ComText text;
    return SUCCEEDED((object->*property)(text.Receive())) ? text.Text() : std::wstring();
}

/// The drive's root, such as "G:\"; empty when it has no letter.
std::wstring RootOf(IDiscRecorder2* recorder) {
    ComArray paths;
    std::wstring root;
    if (FAILED(recorder->get_VolumePathNames(paths.Receive()))) return root;
    paths.ForEach(VT_BSTR, [&](const VARIANT& path) {
        if (root.empty() && path.bstrVal && SysStringLen(path.bstrVal) >= 2 && path.bstrVal[1] == L':')
            root = std::wstring(path.bstrVal, 2) + L"\\";
    });
    return root;
}

std::wstring NameOf(IDiscRecorder2* recorder) {
    std::wstring name = Trimmed(TextOf(recorder, &IDiscRecorder2::get_VendorId));
    const std::wstring product = Trimmed(TextOf(recorder, &IDiscRecorder2::get_ProductId));
    if (!name.empty() && !product.empty()) name += L' ';
    name += product;
    if (const std::wstring root = RootOf(recorder); !root.empty()) name += L" (" + root.substr(0, 2) + L")";
    return name;
}

bool Writes(IDiscRecorder2* recorder, DiscFamily family) {
    constexpr LONG cdProfiles[] = {Mastering::ProfileCdRecordable, Mastering::ProfileCdRewritable};
    constexpr LONG dvdProfiles[] = {Mastering::ProfileDvdMinusR,
                                    Mastering::ProfileDvdRam,
                                    Mastering::ProfileDvdMinusRwRestricted,
                                    Mastering::ProfileDvdMinusRwSequential,
                                    Mastering::ProfileDvdMinusRDlSequential,
                                    Mastering::ProfileDvdMinusRDlJump,
                                    Mastering::ProfileDvdPlusRw,
                                    Mastering::ProfileDvdPlusR,
                                    Mastering::ProfileDvdPlusRwDl,
                                    Mastering::ProfileDvdPlusRDl};
    ComArray profiles;
    const HRESULT result = recorder->get_SupportedProfiles(profiles.Receive());
    // A drive too old to list its profiles writes CDs.
    if (IsResult(result, Mastering::ConfigurationNotSupported) || IsResult(result, Mastering::NoSuchFeature))
        return family == DiscFamily::Cd;
    bool isFound = false;
    profiles.ForEach(VT_I4, [&](const VARIANT& profile) {
        const auto isListed = [&](const auto& list) {
            return std::find(std::begin(list), std::end(list), profile.lVal) != std::end(list);
        };
        isFound = isFound || (family == DiscFamily::Cd ? isListed(cdProfiles) : isListed(dvdProfiles));
    });
    return isFound;
}

/// Whether the drive leaves it open how much of the disc is used.
bool NeedsVolume(const DriveAnswers& answers) {
    if (FAILED(static_cast<HRESULT>(answers.sizesResult))) return true;
    return (answers.mediaState & Mastering::StateOverwriteOnly) && !answers.isHeuristicallyBlank;
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

ComPointer<IDiscRecorder2> OpenRecorder(const std::wstring& id) {
    HRESULT result = S_OK;
    auto recorder = CreateObject<IDiscRecorder2>(CLSID_MsftDiscRecorder2, result);
    const ComText key(id);
    if (recorder && FAILED(recorder->InitializeDiscRecorder(key.Get()))) recorder.Reset();
    return recorder;
}

} // namespace

std::vector<ImapiDriveEntry> ListImapiDrives(DiscFamily family, HRESULT& result) {
    std::vector<ImapiDriveEntry> drives;
    const auto master = CreateObject<IDiscMaster2>(CLSID_MsftDiscMaster2, result);
    if (!master) return drives;
    const auto data = CreateObject<IDiscFormat2Data>(CLSID_MsftDiscFormat2Data, result);
    if (!data) return drives;
    VARIANT_BOOL isSupported = VARIANT_FALSE;
    LONG count = 0;
    if (FAILED(master->get_IsSupportedEnvironment(&isSupported)) || isSupported == VARIANT_FALSE ||
        FAILED(master->get_Count(&count)))
        return drives;
    for (LONG index = 0; index < count; ++index) {
        ComText id;
        if (FAILED(master->get_Item(index, id.Receive()))) continue;
        const auto recorder = OpenRecorder(id.Text());
        if (!recorder) continue;
        VARIANT_BOOL isWriter = VARIANT_FALSE;
        if (FAILED(data->IsRecorderSupported(recorder.Get(), &isWriter)) || isWriter == VARIANT_FALSE) continue;
        if (Writes(recorder.Get(), family)) drives.push_back({id.Text(), NameOf(recorder.Get())});
    }
    return drives;
}

ImapiDrive::ImapiDrive(const std::wstring& id) : recorder_(OpenRecorder(id)) {
    if (!recorder_) return;
    root_ = RootOf(recorder_.Get());
    HRESULT result = S_OK;
    data_ = CreateObject<IDiscFormat2Data>(CLSID_MsftDiscFormat2Data, result);
    if (data_ && FAILED(data_->put_Recorder(recorder_.Get()))) data_.Reset();
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

void ImapiDrive::AskTheRest(DriveAnswers& answers) const {
    LONG total = 0;
    LONG free = 0;
    HRESULT result = data_->get_TotalSectorsOnMedia(&total);
    if (SUCCEEDED(result)) result = data_->get_FreeSectorsOnMedia(&free);
    answers.sizesResult = static_cast<std::uint32_t>(result);
    answers.totalSectors = total;
    answers.freeSectors = free;
    if (answers.mediaState & Mastering::StateOverwriteOnly) {
        VARIANT_BOOL isBlank = VARIANT_FALSE;
        answers.isHeuristicallyBlank =
            SUCCEEDED(data_->get_MediaHeuristicallyBlank(&isBlank)) && isBlank != VARIANT_FALSE;
    }
}

bool ImapiDrive::IsReadFor(const DriveAnswers& quickAnswers) const {
    if (!answers_) return false;
    // Another program's write locks the drive; what was read before still holds.
    if (quickAnswers.mediaTypeResult == Mastering::RecorderLocked) return true;
    // A disc that was just written is mounted some time later.
    const bool isVolumeAwaited = NeedsVolume(*answers_) && snapshot_.disc.usedBytes == 0;
    return !isStale_ && !isVolumeAwaited && quickAnswers.mediaTypeResult == answers_->mediaTypeResult &&
           quickAnswers.mediaType == answers_->mediaType &&
           quickAnswers.mediaStateResult == answers_->mediaStateResult &&
           quickAnswers.mediaState == answers_->mediaState;
}

const DriveSnapshot& ImapiDrive::Read() {
    if (!IsOpen()) {
        snapshot_ = {};
        return snapshot_;
    }
    DriveAnswers answers = AskQuickly();
    if (IsReadFor(answers)) return snapshot_;
    AskTheRest(answers);
    answers_ = answers;
    isStale_ = false;
    const std::uint64_t discBytes = DiscBehind(answers, 0).totalBytes;
    snapshot_.disc = DiscBehind(answers, NeedsVolume(answers) ? MountedVolumeBytes(discBytes) : 0);
    snapshot_.speeds = snapshot_.disc.presence == DiscPresence::Ready ? AskSpeeds() : std::vector<std::uint32_t>();
    return snapshot_;
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
