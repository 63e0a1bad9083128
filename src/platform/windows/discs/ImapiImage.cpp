#include "platform/windows/discs/ImapiImage.h"

#include "platform/discs/DiscLabel.h"
#include "platform/discs/MasteringCodes.h"
#include "platform/windows/discs/FileStream.h"

#include <algorithm>

namespace {

HRESULT AsResult(Mastering::Result code) {
    return static_cast<HRESULT>(code);
}

bool Is(HRESULT result, Mastering::Result code) {
    return static_cast<std::uint32_t>(result) == code;
}

/// A failure of the import in words that name it: the calls have others too, such as E_NOTIMPL before Windows 7.
HRESULT ImportFailure(HRESULT result) {
    constexpr std::uint32_t imageFamily = 0xC0AAB100;
    const auto code = static_cast<std::uint32_t>(result);
    return (code & 0xFFFFFF00) == imageFamily || IsPassing(code) ? result : AsResult(Mastering::ImageImportNotAllowed);
}

/// Whether an overwritable disc can be added to. From Windows 7 on the system has an interface for that; with the one
/// for sessions the new files would be laid out as if there were nothing on the disc.
bool HasRandomWrite(const ComArray& sessions) {
    bool isFound = false;
    sessions.ForEach(VT_UNKNOWN, [&](const VARIANT& session) {
        isFound = isFound || ComPointer<IMultisessionRandomWrite>::From(session.punkVal);
    });
    return isFound;
}

HRESULT ImportDisc(const ImapiDrive& drive, const WriteGround& ground, IFileSystemImage* image) {
    ComArray sessions;
    HRESULT result = drive.Data()->get_MultisessionInterfaces(sessions.Receive());
    if (FAILED(result)) return ImportFailure(result);
    if (ground.isOverwriteOnly && !HasRandomWrite(sessions)) return AsResult(Mastering::ImageImportNotAllowed);
    LONG fileSystem = 0;
    result = image->put_MultisessionInterfaces(sessions.Get());
    if (SUCCEEDED(result)) result = image->ImportFileSystem(&fileSystem);
    return FAILED(result) ? ImportFailure(result) : result;
}

HRESULT ChooseFileSystem(const ImapiDrive& drive, const std::vector<ImageSource>& sources, IFileSystemImage* image) {
    const HRESULT result = image->ChooseImageDefaults(drive.Recorder());
    if (FAILED(result)) return result;
    const bool needsUdf = std::any_of(sources.begin(), sources.end(),
                                      [](const ImageSource& source) { return NeedsUdf(source.sizeBytes); });
    return image->put_FileSystemsToCreate(needsUdf ? LONG{Mastering::Udf}
                                                   : LONG{Mastering::Iso9660} | Mastering::Joliet);
}

/// Gives the label that was taken: the typed one or, where the system refuses what the user may well type, the default
/// date included, one that it accepts.
std::wstring SetLabel(IFileSystemImage* image, const std::wstring& label) {
    if (label.empty()) return label;
    const ComText typed(label);
    const HRESULT result = image->put_VolumeName(typed.Get());
    if (!Is(result, Mastering::ImageInvalidVolumeName) && !Is(result, Mastering::ImageInvalidParameter)) return label;
    std::wstring acceptable = AcceptableDiscLabel(label);
    const ComText accepted(acceptable);
    image->put_VolumeName(accepted.Get());
    return acceptable;
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

} // namespace

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
    ground.isOverwriteOnly = (ground.state & Mastering::StateOverwriteOnly) != 0;
    ground.isBlank = (ground.state & Mastering::StateBlank) != 0;
    if (ground.isOverwriteOnly && !ground.isBlank) {
        VARIANT_BOOL isBlank = VARIANT_FALSE;
        if (FAILED(result = data->get_MediaHeuristicallyBlank(&isBlank))) return result;
        ground.isBlank = isBlank != VARIANT_FALSE;
    }
    if (FAILED(result = data->get_TotalSectorsOnMedia(&ground.totalSectors))) return result;
    return data->get_FreeSectorsOnMedia(&ground.freeSectors);
}

std::wstring LabelOnImage(const std::wstring& label) {
    HRESULT result = S_OK;
    const auto image = CreateObject<IFileSystemImage>(CLSID_MsftFileSystemImage, result);
    return image ? SetLabel(image.Get(), label) : label;
}

HRESULT BuildImage(const ImapiDrive& drive, const WriteGround& ground, const std::wstring& label,
                   const std::vector<ImageSource>& sources, BuiltImage& built) {
    HRESULT result = S_OK;
    built = {CreateObject<IFileSystemImage>(CLSID_MsftFileSystemImage, result), {}};
    IFileSystemImage* image = built.image.Get();
    if (!image) return result;
    // Before the import: what it brings in counts too, and the system's own limit is that of a small CD.
    const LONG limit = ground.isBlank ? ground.freeSectors : ground.totalSectors;
    if (ground.isBlank && FAILED(result = ChooseFileSystem(drive, sources, image))) return result;
    if (FAILED(result = image->put_FreeMediaBlocks(limit))) return result;
    if (!ground.isBlank && FAILED(result = ImportDisc(drive, ground, image))) return result;
    // The archive is not to be copied once more before it is written.
    image->put_StageFiles(VARIANT_FALSE);
    SetLabel(image, label);

    ComPointer<IFsiDirectoryItem> root;
    if (FAILED(result = image->get_Root(root.Receive()))) return result;
    for (const ImageSource& source : sources)
        if (FAILED(result = AddSource(root.Get(), source))) return result;
    return image->CreateResultImage(built.result.Receive());
}
