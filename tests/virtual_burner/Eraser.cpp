#include "ComObject.h"
#include "DiscRecorder.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <filesystem>

namespace {

HRESULT AsResult(Mastering::Result code) {
    return static_cast<HRESULT>(code);
}

class Eraser : public DispatchObject<IDiscFormat2Erase> {
  public:
    Eraser() : source_(*this) {}

    HRESULT STDMETHODCALLTYPE IsRecorderSupported(IDiscRecorder2* recorder, VARIANT_BOOL* value) override {
        return DiscRecorder::Of(recorder) ? GiveFlag(true, value) : E_INVALIDARG;
    }
    HRESULT STDMETHODCALLTYPE IsCurrentMediaSupported(IDiscRecorder2* recorder, VARIANT_BOOL* value) override {
        const DiscRecorder* own = DiscRecorder::Of(recorder);
        if (!own || !value) return E_INVALIDARG;
        *value = VARIANT_FALSE;
        const VirtualDrive drive = own->Drive();
        const VirtualDisc disc(drive);
        if (const HRESULT result = drive.Answer(disc); FAILED(result)) return result;
        return GiveFlag(disc.IsErasable(), value);
    }
    HRESULT STDMETHODCALLTYPE get_MediaPhysicallyBlank(VARIANT_BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_MediaHeuristicallyBlank(VARIANT_BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_SupportedMediaTypes(SAFEARRAY** value) override {
        return GiveNumbers({Mastering::MediaCdRw, Mastering::MediaDvdPlusRw, Mastering::MediaDvdMinusRw}, value);
    }
    HRESULT STDMETHODCALLTYPE put_Recorder(IDiscRecorder2* value) override {
        recorder_.Reset();
        if (!value) return S_OK;
        const DiscRecorder* own = DiscRecorder::Of(value);
        if (!own) return E_INVALIDARG;
        if (const HRESULT result = own->Drive().OpenResult(); FAILED(result)) return result;
        value->AddRef();
        recorder_ = ComPointer<IDiscRecorder2>(value);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_Recorder(IDiscRecorder2**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_FullErase(VARIANT_BOOL value) override {
        isFull_ = value != VARIANT_FALSE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_FullErase(VARIANT_BOOL* value) override { return GiveFlag(isFull_, value); }
    HRESULT STDMETHODCALLTYPE get_CurrentPhysicalMediaType(LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_ClientName(BSTR value) override {
        clientName_ = value ? value : L"";
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_ClientName(BSTR* value) override { return GiveText(clientName_, value); }
    HRESULT STDMETHODCALLTYPE EraseMedia() override;

  private:
    void* OtherThanDispatch(REFIID id) override {
        if (id == InterfaceId<IDiscFormat2>) return static_cast<IDiscFormat2*>(this);
        return source_.Find(id);
    }
    void Tell(LONG elapsed, LONG estimated) { source_.Fire(0x200, {Object(this), Number(elapsed), Number(estimated)}); }

    EventSource<DDiscFormat2EraseEvents> source_;
    ComPointer<IDiscRecorder2> recorder_;
    std::wstring clientName_;
    bool isFull_ = false;
};

HRESULT Eraser::EraseMedia() {
    const DiscRecorder* own = DiscRecorder::Of(recorder_.Get());
    if (!own) return AsResult(Mastering::RecorderRequired);
    if (clientName_.empty()) return AsResult(Mastering::EraseClientNameNotValid);
    const VirtualDrive drive = own->Drive();
    VirtualDisc disc(drive);
    if (const HRESULT result = drive.Answer(disc); FAILED(result)) return result;
    if (!disc.IsErasable()) return AsResult(Mastering::EraseNotErasable);
    if (disc.IsInUse()) return AsResult(Mastering::AccessDenied);
    const DriveHold hold(drive.folder);
    if (!hold.IsHeld()) return AsResult(Mastering::RecorderLocked);
    if (const auto code = drive.settings.OptionalNumber("erase code")) return static_cast<HRESULT>(*code);

    // Told in hundredths of the time it takes here, as if each were a second.
    const std::int64_t stallAt = drive.settings.Number("stall at", -1);
    const auto milliseconds =
        static_cast<DWORD>(drive.settings.Number(isFull_ ? "full erase milliseconds" : "quick erase milliseconds"));
    for (LONG elapsed = 0; elapsed <= 100; elapsed += 2) {
        Tell(elapsed, 100);
        Sleep(milliseconds / 50);
        if (stallAt < 0 || elapsed < stallAt) continue;
        const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(drive.settings.Number("stall milliseconds"));
        for (LONG late = 100; GetTickCount64() < end; ++late) {
            Tell(late, 100);
            Sleep(100);
        }
        break;
    }
    std::error_code ignored;
    std::filesystem::remove(disc.ImagePath(), ignored);
    std::filesystem::remove_all(disc.VolumePath(), ignored);
    std::filesystem::create_directory(disc.VolumePath(), ignored);
    disc.settings.Set("used", "0");
    disc.settings.Set("content", "none");
    disc.settings.Set("erased", isFull_ ? "fully" : "quickly");
    disc.settings.Set("state", "blank");
    drive.BecomeReadyAgain();
    return S_OK;
}

} // namespace

IUnknown* MakeEraser() {
    return new Eraser;
}
