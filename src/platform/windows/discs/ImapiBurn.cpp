#include "platform/windows/discs/ImapiBurn.h"

#include "platform/discs/DiscLabel.h"
#include "platform/discs/DiscSpeeds.h"
#include "platform/discs/MasteringCodes.h"
#include "platform/windows/AwakeHold.h"
#include "platform/windows/discs/DiscSink.h"
#include "platform/windows/discs/FileStream.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr wchar_t ClientName[] = L"Backup";

HRESULT AsResult(Mastering::Result code) {
    return static_cast<HRESULT>(code);
}

bool Is(HRESULT result, Mastering::Result code) {
    return static_cast<std::uint32_t>(result) == code;
}

struct ImageSource {
    std::wstring name;
    ComPointer<IStream> stream;
    std::uint64_t sizeBytes = 0;
};

/// What the drive says of the disc before a write.
struct WriteGround {
    LONG state = 0;
    LONG freeSectors = 0;

    bool IsBlank() const { return (state & Mastering::StateBlank) != 0; }
    bool IsOverwriteOnly() const { return (state & Mastering::StateOverwriteOnly) != 0; }
    bool NeedsImport() const { return !IsBlank() && !IsOverwriteOnly(); }
};

HRESULT OpenSources(const std::vector<std::wstring>& files, std::vector<ImageSource>& sources) {
    for (const std::wstring& path : files) {
        HRESULT result = S_OK;
        ImageSource source;
        source.name = path.substr(path.find_last_of(L"\\/") + 1);
        source.stream = OpenFileStream(path, result);
        if (FAILED(result)) return result;
        STATSTG status{};
        source.stream->Stat(&status, STATFLAG_NONAME);
        source.sizeBytes = status.cbSize.QuadPart;
        sources.push_back(std::move(source));
    }
    return S_OK;
}

HRESULT ReadGround(const ImapiDrive& drive, WriteGround& ground) {
    IDiscFormat2Data* data = drive.Data();
    VARIANT_BOOL isSupported = VARIANT_FALSE;
    HRESULT result = data->IsCurrentMediaSupported(drive.Recorder(), &isSupported);
    if (FAILED(result)) return result;
    if (FAILED(result = data->get_CurrentMediaStatus(&ground.state))) return result;
    if (isSupported == VARIANT_FALSE || ground.state == 0 || (ground.state & Mastering::StateUnwritable))
        return AsResult(Mastering::MediaNotSupported);
    return data->get_FreeSectorsOnMedia(&ground.freeSectors);
}

HRESULT ImportPreviousSession(IDiscFormat2Data* data, IFileSystemImage* image) {
    ComArray sessions;
    HRESULT result = data->get_MultisessionInterfaces(sessions.Receive());
    if (SUCCEEDED(result)) result = image->put_MultisessionInterfaces(sessions.Get());
    LONG fileSystem = 0;
    return SUCCEEDED(result) ? image->ImportFileSystem(&fileSystem) : result;
}

void SetLabel(IFileSystemImage* image, const std::wstring& label) {
    if (label.empty()) return;
    const ComText typed(label);
    const HRESULT result = image->put_VolumeName(typed.Get());
    if (!Is(result, Mastering::ImageInvalidVolumeName) && !Is(result, Mastering::ImageInvalidParameter)) return;
    // The component refuses what the user may well type, the default date included.
    const ComText acceptable(AcceptableDiscLabel(label));
    image->put_VolumeName(acceptable.Get());
}

HRESULT AddSource(IFsiDirectoryItem* root, const ImageSource& source) {
    const ComText name(source.name);
    HRESULT result = root->AddFile(name.Get(), source.stream.Get());
    if (Is(result, Mastering::ImageInvalidPath)) {
        const ComText rooted(L"\\" + source.name);
        result = root->AddFile(rooted.Get(), source.stream.Get());
    }
    if (Is(result, Mastering::ImageDuplicateName)) {
        // A file of the session before: the new one takes its place.
        root->Remove(name.Get());
        result = root->AddFile(name.Get(), source.stream.Get());
    }
    return result;
}

HRESULT BuildImage(const ImapiDrive& drive, const WriteGround& ground, const BurnJob& job,
                   const std::vector<ImageSource>& sources, ComPointer<IFileSystemImageResult>& built) {
    HRESULT result = S_OK;
    const auto image = CreateObject<IFileSystemImage>(CLSID_MsftFileSystemImage, result);
    if (!image) return result;
    if (ground.NeedsImport()) {
        if (FAILED(result = ImportPreviousSession(drive.Data(), image.Get()))) return result;
    } else {
        if (FAILED(result = image->ChooseImageDefaults(drive.Recorder()))) return result;
        const bool needsUdf = std::any_of(sources.begin(), sources.end(),
                                          [](const ImageSource& source) { return NeedsUdf(source.sizeBytes); });
        result = image->put_FileSystemsToCreate(needsUdf ? LONG{Mastering::Udf}
                                                         : LONG{Mastering::Iso9660} | Mastering::Joliet);
        if (FAILED(result)) return result;
    }
    if (FAILED(result = image->put_FreeMediaBlocks(ground.freeSectors))) return result;
    // The archive is not to be copied once more before it is written.
    image->put_StageFiles(VARIANT_FALSE);
    SetLabel(image.Get(), job.label);

    ComPointer<IFsiDirectoryItem> root;
    if (FAILED(result = image->get_Root(root.Receive()))) return result;
    for (const ImageSource& source : sources)
        if (FAILED(result = AddSource(root.Get(), source))) return result;
    return image->CreateResultImage(built.Receive());
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

HRESULT WriteStream(const ImapiDrive& drive, DiscFamily family, const BurnJob& job, const WriteGround& ground,
                    IStream* stream, const OperationFollower& follower) {
    IDiscFormat2Data* data = drive.Data();
    if (job.speed) {
        ComArray array;
        std::vector<std::uint32_t> speeds;
        if (SUCCEEDED(data->get_SupportedWriteSpeeds(array.Receive())))
            array.ForEach(VT_UI4, [&](const VARIANT& speed) { speeds.push_back(speed.ulVal); });
        data->SetWriteSpeed(DiscSpeeds(family, std::move(speeds)).SectorsPerSecond(*job.speed), VARIANT_FALSE);
    } else {
        constexpr LONG fastest = -1;
        data->SetWriteSpeed(fastest, VARIANT_FALSE);
    }
    const bool mustOverwrite = ground.IsOverwriteOnly() && !ground.IsBlank();
    data->put_ForceOverwrite(mustOverwrite ? VARIANT_TRUE : VARIANT_FALSE);

    DiscProgress told{DiscOperation::Preparing, WritingStage::FillingBuffer, 0};
    const ComPointer<WriteSink> sink(new WriteSink([&](IDiscFormat2Data* writer, IDiscFormat2DataEventArgs* step) {
        if (follower.isStopRequested && writer) writer->CancelWrite();
        const DiscProgress progress = ProgressBehind(step, told);
        if (progress == told) return;
        told = progress;
        follower.tell(progress);
    }));
    const SinkConnection connection(data, static_cast<DDiscFormat2DataEvents*>(sink.Get()));
    const AwakeHold awake;
    return data->Write(stream);
}

} // namespace

HRESULT Burn(const ImapiDrive& drive, DiscFamily family, const BurnJob& job, const OperationFollower& follower) {
    if (!drive.IsOpen()) return AsResult(Mastering::RecorderRequired);
    follower.tell({DiscOperation::Preparing, WritingStage::FillingBuffer, 0});
    const ComText clientName{ClientName};
    HRESULT result = drive.Data()->put_ClientName(clientName.Get());
    if (FAILED(result)) return result;

    WriteGround ground;
    std::vector<ImageSource> sources;
    ComPointer<IFileSystemImageResult> image;
    if (FAILED(result = ReadGround(drive, ground)) || FAILED(result = OpenSources(job.files, sources)) ||
        FAILED(result = BuildImage(drive, ground, job, sources, image)))
        return result;
    LONG blocks = 0;
    if (FAILED(result = image->get_TotalBlocks(&blocks))) return result;
    if (blocks > ground.freeSectors) return AsResult(Mastering::StreamTooLarge);
    ComPointer<IStream> stream;
    if (FAILED(result = image->get_ImageStream(stream.Receive()))) return result;
    if (follower.isStopRequested) return AsResult(Mastering::RequestCancelled);
    return WriteStream(drive, family, job, ground, stream.Get(), follower);
}

HRESULT EraseDisc(const ImapiDrive& drive, bool isQuick, const OperationFollower& follower) {
    if (!drive.IsOpen()) return AsResult(Mastering::RecorderRequired);
    HRESULT result = S_OK;
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

    std::optional<DiscProgress> told;
    const ComPointer<EraseSink> sink(new EraseSink([&](LONG elapsedSeconds, LONG estimatedSeconds) {
        const DiscProgress progress = EraseProgress(elapsedSeconds, estimatedSeconds);
        if (progress == told) return;
        told = progress;
        follower.tell(progress);
    }));
    const SinkConnection connection(eraser.Get(), static_cast<DDiscFormat2EraseEvents*>(sink.Get()));
    const AwakeHold awake;
    return eraser->EraseMedia();
}
