#pragma once

#include "ComObject.h"
#include "DiscRecorder.h"
#include "EventThread.h"
#include "Session.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <optional>
#include <vector>

inline HRESULT Failure(Mastering::Result code) {
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

/// Writes discs. What the windows ask of a drive is answered in the class, a write is run in WriteRun.cpp.
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
        return OfDisc(value, [](const VirtualDisc& disc) { return disc.LooksBlank() ? VARIANT_TRUE : VARIANT_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_SupportedMediaTypes(SAFEARRAY** value) override {
        return GiveNumbers({Mastering::MediaCdR, Mastering::MediaCdRw, Mastering::MediaDvdPlusR,
                            Mastering::MediaDvdPlusRw, Mastering::MediaDvdMinusR, Mastering::MediaDvdMinusRw},
                           value);
    }

    HRESULT STDMETHODCALLTYPE put_Recorder(IDiscRecorder2* value) override {
        if (isWriting_) return Failure(Mastering::WriteInProgress);
        recorder_.Reset();
        if (!value) return S_OK;
        const DiscRecorder* own = DiscRecorder::Of(value);
        if (!own || own->Drive().Profiles().empty()) return Failure(Mastering::RecorderNotSupported);
        if (const HRESULT result = own->Drive().OpenResult(); FAILED(result)) return result;
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
        if (SUCCEEDED(result) && speeds.empty()) return Failure(Mastering::NoSuchFeature);
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
        if (!own) return Failure(Mastering::RecorderRequired);
        return GiveSessions(own->Drive(), value);
    }
    HRESULT STDMETHODCALLTYPE Write(IStream* data) override;
    HRESULT STDMETHODCALLTYPE CancelWrite() override {
        // Only from inside Update.
        if (!isWriting_ || !isTelling_) return Failure(Mastering::WriteNotInProgress);
        isCancelled_ = true;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetWriteSpeed(LONG sectorsPerSecond, VARIANT_BOOL) override {
        LONG settled = 0;
        requestedSpeed_ = sectorsPerSecond;
        const HRESULT result = OfDisc(&settled, [&](const VirtualDisc& disc) { return Settled(disc.Speeds()); });
        if (FAILED(result)) return result;
        return sectorsPerSecond == -1 || settled == sectorsPerSecond ? S_OK : Failure(Mastering::SpeedAdjusted);
    }

  private:
    void* OtherThanDispatch(REFIID id) override {
        if (id == InterfaceId<IDiscFormat2>) return static_cast<IDiscFormat2*>(this);
        return source_.Find(id);
    }

    static HRESULT Ready(const VirtualDrive& drive, const VirtualDisc& disc) {
        if (DiscRecorder::IsHeld(drive.folder)) return Failure(Mastering::RecorderLocked);
        return drive.Answer(disc);
    }
    template<class Value, class Ask>
    HRESULT OfDisc(Value* value, Ask ask) {
        if (!value) return E_POINTER;
        *value = 0;
        if (isWriting_) return Failure(Mastering::WriteInProgress);
        const DiscRecorder* own = DiscRecorder::Of(recorder_.Get());
        if (!own) return Failure(Mastering::RecorderRequired);
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
        if (FAILED(result)) return result;
        if (!isSupported) return Failure(Mastering::InvalidMediaState);
        return static_cast<HRESULT>(DiscRecorder::Of(recorder_.Get())->Drive().settings.Number("sizes code", S_OK));
    }
    LONG Settled(const std::vector<LONG>& speeds) const {
        if (speeds.empty()) return requestedSpeed_;
        if (requestedSpeed_ == -1) return speeds.front();
        return *std::min_element(speeds.begin(), speeds.end(), [&](LONG left, LONG right) {
            return std::abs(left - requestedSpeed_) < std::abs(right - requestedSpeed_);
        });
    }
    HRESULT MayWrite(const VirtualDrive& drive, const VirtualDisc& disc, IStream* data, std::uint64_t sizeBytes) const;
    HRESULT Record(IStream* data, const VirtualDrive& drive, VirtualDisc& disc, std::uint64_t sizeBytes);
    HRESULT RecordData(IStream* data, const VirtualDrive& drive, const VirtualDisc& disc, std::uint64_t sizeBytes);
    void Tell(LONG action, std::uint64_t writtenBytes);
    void TellLate(LONG action, std::uint64_t writtenBytes);
    std::vector<VARIANT> Arguments(LONG action, std::uint64_t writtenBytes, ComPointer<WriteStep>& step);

    EventSource<DDiscFormat2DataEvents> source_;
    std::optional<EventThread> eventThread_; ///< while a write runs that tells of itself on another thread
    ComPointer<IDiscRecorder2> recorder_;
    std::wstring clientName_;
    LONG requestedSpeed_ = -1;
    bool mustClose_ = false;
    bool mayOverwrite_ = false;
    std::atomic<bool> isWriting_{false};
    std::atomic<bool> isCancelled_{false};
    std::atomic<bool> isTelling_{false};
    ULONGLONG startTick_ = 0;
    LONG startSector_ = 0;
    LONG sectorCount_ = 0;
};
