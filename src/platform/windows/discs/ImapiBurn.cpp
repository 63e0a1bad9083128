#include "platform/windows/discs/ImapiBurn.h"

#include "platform/discs/DiscSpeeds.h"
#include "platform/discs/MasteringCodes.h"
#include "platform/windows/AwakeHold.h"
#include "platform/windows/discs/DiscSink.h"

#include <cstdint>
#include <optional>

namespace {

constexpr wchar_t ClientName[] = L"Backup";
/// How long a drive that is held or becoming ready is waited for, so that an archive is not built for nothing.
constexpr ULONGLONG PatienceMilliseconds = 20000;
constexpr DWORD PauseMilliseconds = 250;

HRESULT AsResult(Mastering::Result code) {
    return static_cast<HRESULT>(code);
}

DiscProgress ProgressBehind(IDiscFormat2DataEventArgs* step, const DiscProgress& previous) {
    LONG action = 0;
    WriteReport report;
    if (!step || FAILED(step->get_CurrentAction(&action))) return previous;
    report.action = action;
    LONG value = 0;
    if (SUCCEEDED(step->get_StartLba(&value))) report.startSector = value;
    if (SUCCEEDED(step->get_SectorCount(&value))) report.sectorCount = value;
    if (SUCCEEDED(step->get_LastWrittenLba(&value))) report.lastWrittenSector = value;
    return WriteProgress(report, previous).value_or(previous);
}

void SetSpeed(IDiscFormat2Data* data, DiscFamily family, const std::optional<double>& speed) {
    constexpr LONG fastest = -1;
    std::vector<std::uint32_t> speeds;
    ComArray array;
    if (speed && SUCCEEDED(data->get_SupportedWriteSpeeds(array.Receive())))
        array.ForEach(VT_UI4, [&](const VARIANT& found) { speeds.push_back(found.ulVal); });
    data->SetWriteSpeed(speed ? DiscSpeeds(family, std::move(speeds)).SectorsPerSecond(*speed) : fastest,
                        VARIANT_FALSE);
}

HRESULT WriteStream(const ImapiDrive& drive, const WriteGround& ground, IStream* stream,
                    const std::shared_ptr<OperationWatch>& watch) {
    IDiscFormat2Data* data = drive.Data();
    // Never over files: what was imported is kept by what is written after it.
    data->put_ForceOverwrite(ground.isOverwriteOnly && ground.isBlank ? VARIANT_TRUE : VARIANT_FALSE);
    const ComPointer<WriteSink> sink(new WriteSink([watch](IDiscFormat2Data* writer, IDiscFormat2DataEventArgs* step) {
        if (watch->MustCancel() && writer) writer->CancelWrite();
        watch->Report(ProgressBehind(step, watch->Last()));
    }));
    const SinkConnection connection(data, static_cast<DDiscFormat2DataEvents*>(sink.Get()));
    const AwakeHold awake;
    return data->Write(stream);
}

HRESULT BurnOnce(ImapiDrive& drive, DiscFamily family, const BurnJob& job, const std::vector<ImageSource>& sources,
                 const std::shared_ptr<OperationWatch>& watch) {
    WriteGround ground;
    BuiltImage image;
    const ComText clientName{ClientName};
    HRESULT result = drive.Open();
    if (FAILED(result) || FAILED(result = drive.Data()->put_ClientName(clientName.Get())) ||
        FAILED(result = ReadGround(drive, ground)) ||
        FAILED(result = BuildImage(drive, ground, job.label, sources, image)))
        return result;
    LONG blocks = 0;
    if (FAILED(result = image.result->get_TotalBlocks(&blocks))) return result;
    if (blocks > ground.freeSectors) return AsResult(Mastering::StreamTooLarge);
    ComPointer<IStream> stream;
    if (FAILED(result = image.result->get_ImageStream(stream.Receive()))) return result;
    if (watch->IsStopRequested()) return AsResult(Mastering::RequestCancelled);
    SetSpeed(drive.Data(), family, job.speed);
    return WriteStream(drive, ground, stream.Get(), watch);
}

/// Tries again while the drive is held or becoming ready and nothing has been written.
template<class Try>
HRESULT WithPatience(const OperationWatch& watch, Try attempt) {
    const ULONGLONG start = GetTickCount64();
    for (;;) {
        const HRESULT result = attempt();
        if (SUCCEEDED(result) || !IsPassing(static_cast<std::uint32_t>(result)) ||
            watch.Last().operation == DiscOperation::Writing || GetTickCount64() - start > PatienceMilliseconds)
            return result;
        if (watch.IsStopRequested()) return AsResult(Mastering::RequestCancelled);
        Sleep(PauseMilliseconds);
    }
}

} // namespace

HRESULT Burn(ImapiDrive& drive, DiscFamily family, const BurnJob& job, const std::shared_ptr<OperationWatch>& watch) {
    watch->Report({DiscOperation::Preparing, WritingStage::FillingBuffer, 0});
    std::vector<ImageSource> sources;
    const HRESULT result = OpenSources(job.files, sources);
    if (FAILED(result)) return result;
    return WithPatience(*watch, [&] { return BurnOnce(drive, family, job, sources, watch); });
}

HRESULT EraseDisc(ImapiDrive& drive, bool isQuick, const std::shared_ptr<OperationWatch>& watch) {
    HRESULT result = drive.Open();
    if (FAILED(result)) return result;
    const auto eraser = CreateObject<IDiscFormat2Erase>(CLSID_MsftDiscFormat2Erase, result);
    if (!eraser) return result;
    VARIANT_BOOL isSupported = VARIANT_FALSE;
    if (FAILED(result = eraser->IsCurrentMediaSupported(drive.Recorder(), &isSupported))) return result;
    if (isSupported == VARIANT_FALSE) return AsResult(Mastering::EraseNotErasable);
    const ComText clientName{ClientName};
    if (FAILED(result = eraser->put_Recorder(drive.Recorder())) ||
        FAILED(result = eraser->put_ClientName(clientName.Get())) ||
        FAILED(result = eraser->put_FullErase(isQuick ? VARIANT_FALSE : VARIANT_TRUE)))
        return result;

    const ComPointer<EraseSink> sink(new EraseSink([watch](LONG elapsedSeconds, LONG estimatedSeconds) {
        watch->Report(EraseProgress(elapsedSeconds, estimatedSeconds));
    }));
    const SinkConnection connection(eraser.Get(), static_cast<DDiscFormat2EraseEvents*>(sink.Get()));
    const AwakeHold awake;
    return eraser->EraseMedia();
}
