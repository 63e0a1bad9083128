#include "ComObject.h"
#include "DiscRecorder.h"
#include "Session.h"

#include "platform/discs/MasteringCodes.h"
#include "win32/UniqueHandle.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>

namespace {

HRESULT AsResult(Mastering::Result code) {
    return static_cast<HRESULT>(code);
}

/// What an Update event says.
class WriteStep : public DispatchObject<IDiscFormat2DataEventArgs> {
  public:
    LONG action = 0;
    LONG startSector = 0;
    LONG sectorCount = 0;
    LONG lastWrittenSector = 0;
    LONG elapsedSeconds = 0;

    HRESULT STDMETHODCALLTYPE get_StartLba(LONG* value) override { return Give(startSector, value); }
    HRESULT STDMETHODCALLTYPE get_SectorCount(LONG* value) override { return Give(sectorCount, value); }
    HRESULT STDMETHODCALLTYPE get_LastReadLba(LONG* value) override { return Give(lastWrittenSector, value); }
    HRESULT STDMETHODCALLTYPE get_LastWrittenLba(LONG* value) override { return Give(lastWrittenSector, value); }
    HRESULT STDMETHODCALLTYPE get_TotalSystemBuffer(LONG* value) override { return Give<LONG>(1 << 20, value); }
    HRESULT STDMETHODCALLTYPE get_UsedSystemBuffer(LONG* value) override { return Give<LONG>(0, value); }
    HRESULT STDMETHODCALLTYPE get_FreeSystemBuffer(LONG* value) override { return Give<LONG>(1 << 20, value); }
    HRESULT STDMETHODCALLTYPE get_ElapsedTime(LONG* value) override { return Give(elapsedSeconds, value); }
    HRESULT STDMETHODCALLTYPE get_RemainingTime(LONG* value) override { return Give<LONG>(0, value); }
    HRESULT STDMETHODCALLTYPE get_TotalTime(LONG* value) override { return Give(elapsedSeconds, value); }
    HRESULT STDMETHODCALLTYPE get_CurrentAction(LONG* value) override { return Give(action, value); }

  private:
    void* OtherThanDispatch(REFIID id) override {
        return id == InterfaceId<IWriteEngine2EventArgs> ? static_cast<IWriteEngine2EventArgs*>(this) : nullptr;
    }
};

class DataWriter : public DispatchObject<IDiscFormat2Data> {
  public:
    DataWriter() : source_(*this) {}

    HRESULT STDMETHODCALLTYPE IsRecorderSupported(IDiscRecorder2* recorder, VARIANT_BOOL* value) override {
        const DiscRecorder* own = DiscRecorder::Of(recorder);
        return own ? GiveFlag(!own->Drive().Profiles().empty(), value) : E_INVALIDARG;
    }
    HRESULT STDMETHODCALLTYPE IsCurrentMediaSupported(IDiscRecorder2* recorder, VARIANT_BOOL* value) override {
        const DiscRecorder* own = DiscRecorder::Of(recorder);
        if (!own || !value) return E_INVALIDARG;
        *value = VARIANT_FALSE;
        const VirtualDrive drive = own->Drive();
        const VirtualDisc disc(drive);
        if (const HRESULT result = Ready(drive, disc); FAILED(result)) return result;
        return GiveFlag(!(disc.State() & (Mastering::StateUnsupported | Mastering::StateFinalized)), value);
    }
    HRESULT STDMETHODCALLTYPE get_MediaPhysicallyBlank(VARIANT_BOOL* value) override {
        return OfDisc(value, [](const VirtualDisc& disc) {
            return disc.State() & Mastering::StateBlank ? VARIANT_TRUE : VARIANT_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE get_MediaHeuristicallyBlank(VARIANT_BOOL* value) override {
        return OfDisc(value, [](const VirtualDisc& disc) { return disc.IsBlank() ? VARIANT_TRUE : VARIANT_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_SupportedMediaTypes(SAFEARRAY** value) override {
        return GiveNumbers({Mastering::MediaCdR, Mastering::MediaCdRw, Mastering::MediaDvdPlusR,
                            Mastering::MediaDvdPlusRw, Mastering::MediaDvdMinusR, Mastering::MediaDvdMinusRw},
                           value);
    }

    HRESULT STDMETHODCALLTYPE put_Recorder(IDiscRecorder2* value) override {
        if (isWriting_) return AsResult(Mastering::WriteInProgress);
        recorder_.Reset();
        if (!value) return S_OK;
        const DiscRecorder* own = DiscRecorder::Of(value);
        if (!own || own->Drive().Profiles().empty()) return AsResult(Mastering::RecorderNotSupported);
        value->AddRef();
        recorder_ = ComPointer<IDiscRecorder2>(value);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_Recorder(IDiscRecorder2** value) override {
        if (!value) return E_POINTER;
        *value = recorder_.Get();
        if (*value) (*value)->AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE put_BufferUnderrunFreeDisabled(VARIANT_BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_BufferUnderrunFreeDisabled(VARIANT_BOOL* value) override {
        return GiveFlag(false, value);
    }
    HRESULT STDMETHODCALLTYPE put_PostgapAlreadyInImage(VARIANT_BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_PostgapAlreadyInImage(VARIANT_BOOL* value) override { return GiveFlag(false, value); }
    HRESULT STDMETHODCALLTYPE get_CurrentMediaStatus(LONG* value) override {
        return OfDisc(value, [](const VirtualDisc& disc) { return disc.State(); });
    }
    HRESULT STDMETHODCALLTYPE get_WriteProtectStatus(LONG* value) override {
        return OfDisc(value, [](const VirtualDisc&) { return LONG{0}; });
    }
    HRESULT STDMETHODCALLTYPE get_TotalSectorsOnMedia(LONG* value) override {
        return OfSize(value, [](const VirtualDisc& disc) { return disc.TotalSectors(); });
    }
    HRESULT STDMETHODCALLTYPE get_FreeSectorsOnMedia(LONG* value) override {
        return OfSize(value, [](const VirtualDisc& disc) { return disc.FreeSectors(); });
    }
    HRESULT STDMETHODCALLTYPE get_NextWritableAddress(LONG* value) override {
        return OfSize(value, [](const VirtualDisc& disc) { return disc.NextSector(); });
    }
    HRESULT STDMETHODCALLTYPE get_StartAddressOfPreviousSession(LONG* value) override { return Give<LONG>(-1, value); }
    HRESULT STDMETHODCALLTYPE get_LastWrittenAddressOfPreviousSession(LONG* value) override {
        return OfSize(value, [](const VirtualDisc& disc) { return disc.NextSector() - 1; });
    }
    HRESULT STDMETHODCALLTYPE put_ForceMediaToBeClosed(VARIANT_BOOL value) override {
        mustClose_ = value != VARIANT_FALSE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_ForceMediaToBeClosed(VARIANT_BOOL* value) override {
        return GiveFlag(mustClose_, value);
    }
    HRESULT STDMETHODCALLTYPE put_DisableConsumerDvdCompatibilityMode(VARIANT_BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_DisableConsumerDvdCompatibilityMode(VARIANT_BOOL* value) override {
        return GiveFlag(false, value);
    }
    HRESULT STDMETHODCALLTYPE get_CurrentPhysicalMediaType(LONG* value) override {
        return OfDisc(value, [](const VirtualDisc& disc) { return disc.MediaType(); });
    }
    HRESULT STDMETHODCALLTYPE put_ClientName(BSTR value) override {
        clientName_ = value ? value : L"";
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_ClientName(BSTR* value) override { return GiveText(clientName_, value); }
    HRESULT STDMETHODCALLTYPE get_RequestedWriteSpeed(LONG* value) override { return Give(requestedSpeed_, value); }
    HRESULT STDMETHODCALLTYPE get_RequestedRotationTypeIsPureCAV(VARIANT_BOOL* value) override {
        return GiveFlag(false, value);
    }
    HRESULT STDMETHODCALLTYPE get_CurrentWriteSpeed(LONG* value) override {
        return OfDisc(value, [&](const VirtualDisc& disc) { return Settled(disc.Speeds()); });
    }
    HRESULT STDMETHODCALLTYPE get_CurrentRotationTypeIsPureCAV(VARIANT_BOOL* value) override {
        return GiveFlag(false, value);
    }
    HRESULT STDMETHODCALLTYPE get_SupportedWriteSpeeds(SAFEARRAY** value) override {
        std::vector<LONG> speeds;
        LONG ignored = 0;
        const HRESULT result = OfDisc(&ignored, [&](const VirtualDisc& disc) {
            speeds = disc.Speeds();
            return LONG{0};
        });
        return FAILED(result) ? result : GiveNumbers(speeds, value, VT_UI4);
    }
    HRESULT STDMETHODCALLTYPE get_SupportedWriteSpeedDescriptors(SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_ForceOverwrite(VARIANT_BOOL value) override {
        mayOverwrite_ = value != VARIANT_FALSE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_ForceOverwrite(VARIANT_BOOL* value) override {
        return GiveFlag(mayOverwrite_, value);
    }
    HRESULT STDMETHODCALLTYPE get_MultisessionInterfaces(SAFEARRAY** value) override {
        const DiscRecorder* own = DiscRecorder::Of(recorder_.Get());
        if (!own) return AsResult(Mastering::RecorderRequired);
        const std::wstring folder = own->Folder();
        return GiveArray(1, value, [&](std::size_t) {
            VARIANT element = Object(new Session(folder));
            return element;
        });
    }
    HRESULT STDMETHODCALLTYPE Write(IStream* data) override;
    HRESULT STDMETHODCALLTYPE CancelWrite() override {
        if (!isWriting_) return AsResult(Mastering::WriteNotInProgress);
        isCancelled_ = true;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetWriteSpeed(LONG sectorsPerSecond, VARIANT_BOOL) override {
        LONG settled = 0;
        requestedSpeed_ = sectorsPerSecond;
        const HRESULT result = OfDisc(&settled, [&](const VirtualDisc& disc) { return Settled(disc.Speeds()); });
        if (FAILED(result)) return result;
        return sectorsPerSecond == -1 || settled == sectorsPerSecond ? S_OK : AsResult(Mastering::SpeedAdjusted);
    }

  private:
    void* OtherThanDispatch(REFIID id) override {
        if (id == InterfaceId<IDiscFormat2>) return static_cast<IDiscFormat2*>(this);
        return source_.Find(id);
    }

    static HRESULT Ready(const VirtualDrive& drive, const VirtualDisc& disc) {
        if (DiscRecorder::IsHeld(drive.folder)) return AsResult(Mastering::RecorderLocked);
        if (const HRESULT result = drive.QueryResult(); FAILED(result)) return result;
        return disc.IsPresent() ? S_OK : AsResult(Mastering::NoMedia);
    }
    template<class Value, class Ask>
    HRESULT OfDisc(Value* value, Ask ask) {
        if (!value) return E_POINTER;
        *value = 0;
        if (isWriting_) return AsResult(Mastering::WriteInProgress);
        const DiscRecorder* own = DiscRecorder::Of(recorder_.Get());
        if (!own) return AsResult(Mastering::RecorderRequired);
        const VirtualDrive drive = own->Drive();
        const VirtualDisc disc(drive);
        if (const HRESULT result = Ready(drive, disc); FAILED(result)) return result;
        *value = ask(disc);
        return S_OK;
    }
    template<class Ask>
    HRESULT OfSize(LONG* value, Ask ask) {
        bool isSupported = true;
        const HRESULT result = OfDisc(value, [&](const VirtualDisc& disc) {
            isSupported = !(disc.State() & Mastering::StateUnsupported);
            return isSupported ? ask(disc) : 0;
        });
        return SUCCEEDED(result) && !isSupported ? AsResult(Mastering::InvalidMediaState) : result;
    }
    LONG Settled(const std::vector<LONG>& speeds) const {
        if (speeds.empty()) return requestedSpeed_;
        if (requestedSpeed_ == -1) return speeds.front();
        return *std::min_element(speeds.begin(), speeds.end(), [&](LONG left, LONG right) {
            return std::abs(left - requestedSpeed_) < std::abs(right - requestedSpeed_);
        });
    }
    HRESULT MayWrite(const VirtualDrive& drive, const VirtualDisc& disc, std::uint64_t sizeBytes) const;
    HRESULT Record(IStream* data, const VirtualDrive& drive, VirtualDisc& disc, std::uint64_t sizeBytes);
    HRESULT RecordData(IStream* data, const VirtualDrive& drive, const VirtualDisc& disc, std::uint64_t sizeBytes);
    void Tell(LONG action, std::uint64_t writtenBytes);

    EventSource<DDiscFormat2DataEvents> source_;
    ComPointer<IDiscRecorder2> recorder_;
    std::wstring clientName_;
    LONG requestedSpeed_ = -1;
    bool mustClose_ = false;
    bool mayOverwrite_ = false;
    std::atomic<bool> isWriting_{false};
    std::atomic<bool> isCancelled_{false};
    ULONGLONG startTick_ = 0;
    LONG startSector_ = 0;
    LONG sectorCount_ = 0;
};

HRESULT DataWriter::MayWrite(const VirtualDrive& drive, const VirtualDisc& disc, std::uint64_t sizeBytes) const {
    if (clientName_.empty()) return AsResult(Mastering::ClientNameNotValid);
    if (drive.settings.Flag("busy")) return AsResult(Mastering::RecorderLocked);
    if (!disc.IsPresent()) return AsResult(Mastering::NoMedia);
    if (const auto code = drive.settings.OptionalNumber("start code")) return static_cast<HRESULT>(*code);
    if (disc.State() & Mastering::StateUnwritable) return AsResult(Mastering::MediaNotSupported);
    if (sizeBytes % Mastering::SectorBytes != 0) return AsResult(Mastering::StreamNotSupported);
    if (disc.IsOverwriteOnly() && !disc.IsBlank() && !mayOverwrite_) return AsResult(Mastering::MediaNotBlank);
    const std::uint64_t freeBytes = static_cast<std::uint64_t>(disc.FreeSectors()) * Mastering::SectorBytes;
    return sizeBytes > freeBytes ? AsResult(Mastering::StreamTooLarge) : S_OK;
}

HRESULT DataWriter::Write(IStream* data) {
    if (!data) return E_POINTER;
    if (isWriting_.exchange(true)) return AsResult(Mastering::WriteInProgress);
    isCancelled_ = false;
    HRESULT result = AsResult(Mastering::RecorderRequired);
    if (const DiscRecorder* own = DiscRecorder::Of(recorder_.Get())) {
        const VirtualDrive drive = own->Drive();
        VirtualDisc disc(drive);
        STATSTG status{};
        data->Stat(&status, STATFLAG_NONAME);
        result = MayWrite(drive, disc, status.cbSize.QuadPart);
        const DriveHold hold(drive.folder);
        if (SUCCEEDED(result) && !hold.IsHeld()) result = AsResult(Mastering::RecorderLocked);
        if (SUCCEEDED(result)) result = Record(data, drive, disc, status.cbSize.QuadPart);
    }
    isWriting_ = false;
    return result;
}

void DataWriter::Tell(LONG action, std::uint64_t writtenBytes) {
    ComPointer<WriteStep> step(new WriteStep);
    step->action = action;
    step->startSector = startSector_;
    step->sectorCount = sectorCount_;
    step->lastWrittenSector = startSector_ + static_cast<LONG>(writtenBytes / Mastering::SectorBytes);
    step->elapsedSeconds = static_cast<LONG>((GetTickCount64() - startTick_) / 1000);
    source_.Fire(0x200, {Object(this), Object(step.Get())});
}

HRESULT DataWriter::Record(IStream* data, const VirtualDrive& drive, VirtualDisc& disc, std::uint64_t sizeBytes) {
    startTick_ = GetTickCount64();
    startSector_ = disc.NextSector();
    sectorCount_ = static_cast<LONG>(sizeBytes / Mastering::SectorBytes);
    for (LONG action : {Mastering::ActionValidating, Mastering::ActionInitializing, Mastering::ActionCalibrating}) {
        Tell(action, 0);
        if (isCancelled_) return AsResult(Mastering::RequestCancelled);
    }
    const bool isOverwritten = disc.IsOverwriteOnly();
    const HRESULT result = RecordData(data, drive, disc, sizeBytes);
    if (result == AsResult(Mastering::NoMedia)) return result;
    if (FAILED(result)) {
        disc.settings.Set("state", "incomplete");
        if (result == AsResult(Mastering::RequestCancelled))
            Sleep(static_cast<DWORD>(drive.settings.Number("stop milliseconds")));
        return result;
    }
    Tell(Mastering::ActionFinalizing, sizeBytes);
    const std::uint64_t used = static_cast<std::uint64_t>(startSector_) * Mastering::SectorBytes + sizeBytes;
    const auto capacity = static_cast<std::uint64_t>(disc.settings.Number("capacity"));
    disc.settings.Set("used", std::to_string(used));
    disc.settings.Set("speed", std::to_string(Settled(disc.Speeds())));
    disc.settings.Set("writes", std::to_string(disc.settings.Number("writes") + 1));
    disc.settings.Set("content", "pending");
    const bool isFull = !isOverwritten && used + capacity / 50 > capacity;
    disc.settings.Set("state", mustClose_ || isFull ? "closed" : "open");
    Tell(Mastering::ActionCompleted, sizeBytes);
    if (drive.settings.Text("shows content", "yes") == "yes") StartShowingContent(disc.folder);
    return S_OK;
}

HRESULT DataWriter::RecordData(IStream* data, const VirtualDrive& drive, const VirtualDisc& disc,
                               std::uint64_t sizeBytes) {
    constexpr ULONG pieceBytes = 1 << 17;
    const auto seconds = static_cast<double>(drive.settings.Number("write milliseconds")) / 1000;
    const std::int64_t failAt = drive.settings.Number("fail at", -1);
    const std::int64_t ejectAt = drive.settings.Number("eject at", -1);
    std::int64_t stallAt = drive.settings.Number("stall at", -1);
    const bool isAppended = startSector_ > 0;
    UniqueFile target(CreateFileW(disc.ImagePath().c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                  isAppended ? OPEN_EXISTING : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER start{};
    start.QuadPart = std::int64_t{startSector_} * Mastering::SectorBytes;
    if (!target || !SetFilePointerEx(target.Get(), start, nullptr, FILE_BEGIN))
        return AsResult(Mastering::UnexpectedResponse);

    const auto buffer = std::make_unique<std::uint8_t[]>(pieceBytes);
    std::uint64_t written = 0;
    std::int64_t toldPercent = -1;
    for (;;) {
        const auto percent = static_cast<std::int64_t>(sizeBytes ? written * 100 / sizeBytes : 100);
        if (percent != toldPercent) {
            toldPercent = percent;
            Tell(Mastering::ActionWriting, written);
        }
        if (stallAt >= 0 && percent >= stallAt) {
            stallAt = -1;
            const ULONGLONG end =
                GetTickCount64() + static_cast<ULONGLONG>(drive.settings.Number("stall milliseconds"));
            while (GetTickCount64() < end && !isCancelled_) {
                Sleep(100);
                Tell(Mastering::ActionWriting, written);
            }
        }
        if (isCancelled_) return AsResult(Mastering::RequestCancelled);
        if (failAt >= 0 && percent >= failAt)
            return static_cast<HRESULT>(drive.settings.Number("fail code", Mastering::UnexpectedResponse));
        if (ejectAt >= 0 && percent >= ejectAt) {
            target.Reset();
            EjectDisc(drive.folder);
            return AsResult(Mastering::NoMedia);
        }
        if (written >= sizeBytes) break;
        ULONG count = 0;
        const HRESULT read = data->Read(buffer.get(), pieceBytes, &count);
        if (FAILED(read) || count == 0) return FAILED(read) ? read : AsResult(Mastering::LossOfStreaming);
        DWORD stored = 0;
        if (!WriteFile(target.Get(), buffer.get(), count, &stored, nullptr) || stored != count)
            return AsResult(Mastering::UnexpectedResponse);
        written += count;
        const double due = seconds * static_cast<double>(written) / static_cast<double>(sizeBytes);
        while (static_cast<double>(GetTickCount64() - startTick_) / 1000 < due && !isCancelled_) {
            Sleep(20);
            Tell(Mastering::ActionWriting, written);
        }
    }
    return isAppended ? RepeatDescriptors(target.Get(), startSector_) : S_OK;
}

} // namespace

IUnknown* MakeDataWriter() {
    return new DataWriter;
}
