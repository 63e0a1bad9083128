// A write of the virtual burner, from its checks to what the drive does afterwards.
#include "DataWriter.h"
#include "ImageStream.h"
#include "Session.h"

#include "platform/Thread.h"
#include "win32/UniqueHandle.h"

#include <algorithm>
#include <memory>

HRESULT DataWriter::MayWrite(const VirtualDrive& drive, const VirtualDisc& disc, IStream* data,
                             std::uint64_t sizeBytes) const {
    if (clientName_.empty()) return Failure(Mastering::ClientNameNotValid);
    if (const HRESULT result = drive.Answer(disc); FAILED(result)) return result;
    if (const auto code = drive.settings.OptionalNumber("start code")) return static_cast<HRESULT>(*code);
    if (disc.IsInUse()) return Failure(Mastering::AccessDenied);
    if (disc.State() & Mastering::StateUnwritable) return Failure(Mastering::MediaNotSupported);
    if (sizeBytes % Mastering::SectorBytes != 0) return Failure(Mastering::StreamNotSupported);
    const LONG start = StartSectorOf(data);
    // What was laid out for the start of the disc cannot be read further on.
    if (!disc.IsOverwriteOnly() && start != disc.NextSector()) return Failure(Mastering::StreamNotSupported);
    if (disc.IsOverwriteOnly() && start == 0 && !disc.LooksBlank() && !mayOverwrite_)
        return Failure(Mastering::MediaNotBlank);
    const LONG taken = disc.IsOverwriteOnly() ? start : 0;
    const std::uint64_t freeBytes = static_cast<std::uint64_t>(disc.FreeSectors() - taken) * Mastering::SectorBytes;
    return sizeBytes > freeBytes ? Failure(Mastering::StreamTooLarge) : S_OK;
}

HRESULT DataWriter::Write(IStream* data) {
    if (!data) return E_POINTER;
    if (isWriting_.exchange(true)) return Failure(Mastering::WriteInProgress);
    isCancelled_ = false;
    HRESULT result = Failure(Mastering::RecorderRequired);
    if (const DiscRecorder* own = DiscRecorder::Of(recorder_.Get())) {
        const VirtualDrive drive = own->Drive();
        VirtualDisc disc(drive);
        STATSTG status{};
        data->Stat(&status, STATFLAG_NONAME);
        result = MayWrite(drive, disc, data, status.cbSize.QuadPart);
        startSector_ = StartSectorOf(data);
        const DriveHold hold(drive.folder);
        if (SUCCEEDED(result) && !hold.IsHeld()) result = Failure(Mastering::RecorderLocked);
        if (SUCCEEDED(result)) {
            if (drive.IsStern("own thread")) eventThread_.emplace();
            result = Record(data, drive, disc, status.cbSize.QuadPart);
            eventThread_.reset();
            drive.BecomeReadyAgain();
            if (drive.IsStern("late events")) TellLate(Mastering::ActionWriting, 0);
        }
    }
    isWriting_ = false;
    return result;
}

std::vector<VARIANT> DataWriter::Arguments(LONG action, std::uint64_t writtenBytes, ComPointer<WriteStep>& step) {
    step = ComPointer<WriteStep>(new WriteStep);
    step->action = action;
    step->startSector = startSector_;
    step->sectorCount = sectorCount_;
    step->lastWrittenSector = startSector_ + static_cast<LONG>(writtenBytes / Mastering::SectorBytes);
    step->elapsedSeconds = static_cast<LONG>((GetTickCount64() - startTick_) / 1000);
    return {Object(this), Object(step.Get())};
}

void DataWriter::Tell(LONG action, std::uint64_t writtenBytes) {
    ComPointer<WriteStep> step;
    auto arguments = Arguments(action, writtenBytes, step);
    isTelling_ = true;
    const auto fire = [&] { source_.Fire(0x200, std::move(arguments)); };
    if (eventThread_)
        eventThread_->Deliver(fire);
    else
        fire();
    isTelling_ = false;
}

/// An event that was on its way when the write returned: the sink gets it although it has been disconnected by then.
void DataWriter::TellLate(LONG action, std::uint64_t writtenBytes) {
    ComPointer<WriteStep> step;
    auto arguments = Arguments(action, writtenBytes, step);
    ComPointer<IDispatch> self(this);
    AddRef();
    StartThread([self, step, arguments = std::move(arguments), sinks = source_.Sinks()]() mutable {
        constexpr DWORD lateMilliseconds = 30;
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        Sleep(lateMilliseconds);
        FireAt(sinks, 0x200, std::move(arguments));
        sinks.clear();
        step.Reset();
        self.Reset();
        CoUninitialize();
    });
}

HRESULT DataWriter::Record(IStream* data, const VirtualDrive& drive, VirtualDisc& disc, std::uint64_t sizeBytes) {
    startTick_ = GetTickCount64();
    sectorCount_ = static_cast<LONG>(sizeBytes / Mastering::SectorBytes);
    for (LONG action : {Mastering::ActionValidating, Mastering::ActionInitializing, Mastering::ActionCalibrating}) {
        Tell(action, 0);
        if (isCancelled_) return Failure(Mastering::RequestCancelled);
    }
    const bool isOverwritten = disc.IsOverwriteOnly();
    disc.Unmount();
    const HRESULT result = RecordData(data, drive, disc, sizeBytes);
    if (result == Failure(Mastering::NoMedia)) return result;
    const bool isShown = drive.settings.Text("shows content", "yes") == "yes";
    if (FAILED(result)) {
        disc.settings.Set("state", "incomplete");
        disc.settings.Set("writes", std::to_string(disc.settings.Number("writes") + 1));
        disc.settings.Set("content", "pending");
        if (isShown) StartShowingContent(disc.folder);
        if (result == Failure(Mastering::RequestCancelled))
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
    if (isShown) StartShowingContent(disc.folder);
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
        return Failure(Mastering::UnexpectedResponse);

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
        if (isCancelled_) return Failure(Mastering::RequestCancelled);
        if (failAt >= 0 && percent >= failAt)
            return static_cast<HRESULT>(drive.settings.Number("fail code", Mastering::UnexpectedResponse));
        if (ejectAt >= 0 && percent >= ejectAt) {
            target.Reset();
            EjectDisc(drive.folder);
            return Failure(Mastering::NoMedia);
        }
        if (written >= sizeBytes) break;
        ULONG count = 0;
        const HRESULT read = data->Read(buffer.get(), pieceBytes, &count);
        if (FAILED(read) || count == 0) return FAILED(read) ? read : Failure(Mastering::LossOfStreaming);
        DWORD stored = 0;
        if (!WriteFile(target.Get(), buffer.get(), count, &stored, nullptr) || stored != count)
            return Failure(Mastering::UnexpectedResponse);
        written += count;
        const double due = seconds * static_cast<double>(written) / static_cast<double>(sizeBytes);
        while (static_cast<double>(GetTickCount64() - startTick_) / 1000 < due && !isCancelled_) {
            Sleep(20);
            Tell(Mastering::ActionWriting, written);
        }
    }
    return isAppended ? RepeatDescriptors(target.Get(), startSector_) : S_OK;
}
