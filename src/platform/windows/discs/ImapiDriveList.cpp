#include "platform/windows/discs/ImapiDriveList.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <iterator>

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

std::wstring NameOf(IDiscRecorder2* recorder) {
    std::wstring name = Trimmed(TextOf(recorder, &IDiscRecorder2::get_VendorId));
    const std::wstring product = Trimmed(TextOf(recorder, &IDiscRecorder2::get_ProductId));
    if (!name.empty() && !product.empty()) name += L' ';
    name += product;
    if (const std::wstring root = RootOf(recorder); !root.empty()) name += L" (" + root.substr(0, 2) + L")";
    return name;
}

/// Nothing when the drive does not answer now.
std::optional<bool> Writes(IDiscRecorder2* recorder, DiscFamily family) {
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
    if (FAILED(result)) return std::nullopt;
    bool isFound = false;
    profiles.ForEach(VT_I4, [&](const VARIANT& profile) {
        const auto isListed = [&](const auto& list) {
            return std::find(std::begin(list), std::end(list), profile.lVal) != std::end(list);
        };
        isFound = isFound || (family == DiscFamily::Cd ? isListed(cdProfiles) : isListed(dvdProfiles));
    });
    return isFound;
}

} // namespace

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

ComPointer<IDiscRecorder2> OpenRecorder(const std::wstring& id, HRESULT& result) {
    auto recorder = CreateObject<IDiscRecorder2>(CLSID_MsftDiscRecorder2, result);
    if (!recorder) return recorder;
    const ComText key(id);
    result = recorder->InitializeDiscRecorder(key.Get());
    if (FAILED(result)) recorder.Reset();
    return recorder;
}

/// Nothing when image mastering cannot be reached, or does not answer.
std::optional<std::vector<std::wstring>> ImapiDriveList::Ids() {
    // Made anew each time: whether one that is kept takes notice of drives that come and go is not documented.
    const auto master = CreateObject<IDiscMaster2>(CLSID_MsftDiscMaster2, result_);
    if (!master) return std::nullopt;
    std::vector<std::wstring> ids;
    VARIANT_BOOL isSupported = VARIANT_FALSE;
    LONG count = 0;
    if (FAILED(master->get_IsSupportedEnvironment(&isSupported))) return std::nullopt;
    if (isSupported == VARIANT_FALSE || FAILED(master->get_Count(&count))) return ids;
    for (LONG index = 0; index < count; ++index) {
        ComText id;
        if (SUCCEEDED(master->get_Item(index, id.Receive()))) ids.push_back(id.Text());
    }
    return ids;
}

ImapiDriveList::Drive ImapiDriveList::Asked(const std::wstring& id, IDiscFormat2Data* data) const {
    Drive drive;
    drive.id = id;
    HRESULT result = S_OK;
    const auto recorder = OpenRecorder(id, result);
    if (!recorder) return drive;
    VARIANT_BOOL isWriter = VARIANT_FALSE;
    if (FAILED(data->IsRecorderSupported(recorder.Get(), &isWriter))) return drive;
    const auto writes = isWriter == VARIANT_FALSE ? std::optional(false) : Writes(recorder.Get(), family_);
    drive.hasAnswered = writes.has_value();
    if (writes.value_or(false)) drive.writer = ImapiDriveEntry{id, NameOf(recorder.Get())};
    return drive;
}

bool ImapiDriveList::Refresh() {
    const auto ids = Ids();
    if (!ids) return false;
    const bool isSame = std::equal(ids->begin(), ids->end(), drives_.begin(), drives_.end(),
                                   [](const std::wstring& id, const Drive& drive) { return id == drive.id; });
    if (isSame && std::all_of(drives_.begin(), drives_.end(), [](const Drive& drive) { return drive.hasAnswered; }))
        return false;
    const auto data = CreateObject<IDiscFormat2Data>(CLSID_MsftDiscFormat2Data, result_);
    if (!data) return false;
    std::vector<Drive> drives;
    std::vector<ImapiDriveEntry> writers;
    for (const std::wstring& id : *ids) {
        const auto known = std::find_if(drives_.begin(), drives_.end(),
                                        [&](const Drive& drive) { return drive.id == id && drive.hasAnswered; });
        drives.push_back(known != drives_.end() ? *known : Asked(id, data.Get()));
        if (drives.back().writer) writers.push_back(*drives.back().writer);
    }
    drives_ = std::move(drives);
    if (writers == writers_) return false;
    writers_ = std::move(writers);
    return true;
}
