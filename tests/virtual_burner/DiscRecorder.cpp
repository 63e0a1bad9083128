#include "DiscRecorder.h"

#include "SlimMutex.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <set>

namespace {

/// By which this server knows its own recorders.
constexpr GUID OwnRecorderId = {0x6f1d7ad2, 0x3b52, 0x4a57, {0x9c, 0x0e, 0x2b, 0x54, 0x86, 0x1f, 0x70, 0x11}};

SlimMutex heldMutex;
std::set<std::wstring> heldFolders;

std::wstring Padded(const std::string& text, std::size_t length) {
    std::wstring padded = Wide(text);
    if (padded.size() < length) padded.resize(length, L' ');
    return padded;
}

} // namespace

DiscRecorder* DiscRecorder::Of(IDiscRecorder2* recorder) {
    void* own = nullptr;
    if (!recorder || FAILED(recorder->QueryInterface(OwnRecorderId, &own))) return nullptr;
    auto* found = static_cast<DiscRecorder*>(static_cast<IDiscRecorder2*>(own));
    found->Release();
    return found->IsInitialized() ? found : nullptr;
}

void* DiscRecorder::OtherThanDispatch(REFIID id) {
    return id == OwnRecorderId ? static_cast<IDiscRecorder2*>(this) : nullptr;
}

bool DiscRecorder::IsHeld(const std::wstring& folder) {
    std::lock_guard lock(heldMutex);
    return heldFolders.count(folder) != 0;
}

void DiscRecorder::Hold(const std::wstring& folder, bool isHeld) {
    std::lock_guard lock(heldMutex);
    if (isHeld)
        heldFolders.insert(folder);
    else
        heldFolders.erase(folder);
}

HRESULT DiscRecorder::InitializeDiscRecorder(BSTR id) {
    const auto folders = DriveFolders();
    const std::wstring folder = id ? id : L"";
    if (std::find(folders.begin(), folders.end(), folder) == folders.end()) return E_INVALIDARG;
    if (const HRESULT result = VirtualDrive(folder).OpenResult(); FAILED(result)) return result;
    folder_ = folder;
    return S_OK;
}

HRESULT DiscRecorder::EjectMedia() {
    const VirtualDrive drive = Drive();
    const std::wstring outside = folder_ + L"\\ejected";
    return MoveFileExW(drive.DiscFolder().c_str(), outside.c_str(), 0) ? S_OK
                                                                       : static_cast<HRESULT>(Mastering::NoMedia);
}

HRESULT DiscRecorder::get_VendorId(BSTR* value) {
    return GiveText(Padded(Drive().settings.Text("vendor"), 8), value);
}

HRESULT DiscRecorder::get_ProductId(BSTR* value) {
    return GiveText(Padded(Drive().settings.Text("product"), 16), value);
}

HRESULT DiscRecorder::get_VolumePathNames(SAFEARRAY** value) {
    const std::wstring letter = Wide(Drive().settings.Text("letter"));
    return GiveArray(letter.empty() ? 0 : 1, value, [&](std::size_t) {
        VARIANT element;
        VariantInit(&element);
        element.vt = VT_BSTR;
        element.bstrVal = SysAllocString((letter.substr(0, 1) + L":\\").c_str());
        return element;
    });
}

IUnknown* MakeDiscRecorder() {
    return new DiscRecorder;
}
