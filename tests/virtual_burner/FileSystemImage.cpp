#include "ComObject.h"
#include "DiscContent.h"
#include "DiscRecorder.h"
#include "ImageLayout.h"
#include "ImageStream.h"
#include "Session.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <memory>

namespace {

constexpr std::uint64_t LargestIsoFileBytes = (std::uint64_t{2} << 30) - 1;

HRESULT AsResult(Mastering::Result code) {
    return static_cast<HRESULT>(code);
}

class ImageResult : public DispatchObject<IFileSystemImageResult> {
  public:
    ImageResult(ImagePlan plan, std::uint32_t startSector)
        : sectors_(plan.sectors), stream_(new ImageStream(std::move(plan), startSector)) {}

    HRESULT STDMETHODCALLTYPE get_ImageStream(IStream** value) override {
        if (!value) return E_POINTER;
        *value = stream_.Get();
        (*value)->AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_ProgressItems(IProgressItems**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_TotalBlocks(LONG* value) override { return Give(static_cast<LONG>(sectors_), value); }
    HRESULT STDMETHODCALLTYPE get_BlockSize(LONG* value) override { return Give<LONG>(Mastering::SectorBytes, value); }
    HRESULT STDMETHODCALLTYPE get_DiscId(BSTR*) override { return E_NOTIMPL; }

  private:
    std::uint64_t sectors_;
    ComPointer<IStream> stream_;
};

/// What an image holds, shared with its root item.
struct ImageContent {
    std::vector<ImageEntry> entries;
    LONG fileSystems = LONG{Mastering::Iso9660} | Mastering::Joliet;
    LONG freeBlocks = 332800; // as small as the system's own default: a program must raise it
    bool isReadOnly = false;

    std::uint64_t UsedBlocks() const {
        std::uint64_t blocks = 300;
        // What an earlier session holds counts too.
        for (const ImageEntry& entry : entries) blocks += SectorsFor(entry.sizeBytes);
        return blocks;
    }
    bool HasOnlyUdf() const { return fileSystems == Mastering::Udf; }
};

bool IsSameName(const std::wstring& left, const std::wstring& right) {
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

class RootItem : public DispatchObject<IFsiDirectoryItem> {
  public:
    explicit RootItem(std::shared_ptr<ImageContent> content) : content_(std::move(content)) {}

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) override { return GiveText({}, value); }
    HRESULT STDMETHODCALLTYPE get_FullPath(BSTR* value) override { return GiveText(L"\\", value); }
    HRESULT STDMETHODCALLTYPE get_CreationTime(DATE*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_CreationTime(DATE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_LastAccessedTime(DATE*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_LastAccessedTime(DATE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_LastModifiedTime(DATE*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_LastModifiedTime(DATE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_IsHidden(VARIANT_BOOL* value) override { return GiveFlag(false, value); }
    HRESULT STDMETHODCALLTYPE put_IsHidden(VARIANT_BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FileSystemName(LONG, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FileSystemPath(LONG, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get__NewEnum(IEnumVARIANT**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Item(BSTR, IFsiItem**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Count(LONG* value) override {
        return Give(static_cast<LONG>(content_->entries.size()), value);
    }
    HRESULT STDMETHODCALLTYPE get_EnumFsiItems(IEnumFsiItems**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AddDirectory(BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AddFile(BSTR path, IStream* fileData) override {
        if (!path || !fileData) return E_POINTER;
        if (content_->isReadOnly) return AsResult(Mastering::ImageReadOnly);
        const std::wstring name = path;
        if (name.empty() || name.size() > 64 || name.find_first_of(L"\\/*:?\"<>|;") != std::wstring::npos)
            return AsResult(Mastering::ImageInvalidPath);
        if (Find(name) != content_->entries.end()) return AsResult(Mastering::ImageDuplicateName);
        STATSTG status{};
        if (FAILED(fileData->Stat(&status, STATFLAG_NONAME))) return AsResult(Mastering::ImageReadFailure);
        ImageEntry entry;
        entry.name = name;
        fileData->AddRef();
        entry.stream = ComPointer<IStream>(fileData);
        entry.sizeBytes = status.cbSize.QuadPart;
        FileTimeToSystemTime(&status.mtime, &entry.modified);
        if (!content_->HasOnlyUdf() && entry.sizeBytes > LargestIsoFileBytes)
            return AsResult(Mastering::ImageDataTooBig);
        const std::uint64_t blocks = content_->UsedBlocks() + SectorsFor(entry.sizeBytes);
        if (content_->freeBlocks != 0 && blocks > static_cast<std::uint64_t>(content_->freeBlocks))
            return AsResult(Mastering::ImageSizeLimit);
        content_->entries.push_back(std::move(entry));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE AddTree(BSTR, VARIANT_BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Add(IFsiItem*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Remove(BSTR path) override {
        const auto found = Find(path ? path : L"");
        if (found == content_->entries.end()) return AsResult(Mastering::ImageItemNotFound);
        content_->entries.erase(found);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE RemoveTree(BSTR) override { return E_NOTIMPL; }

  private:
    void* OtherThanDispatch(REFIID id) override {
        return id == InterfaceId<IFsiItem> ? static_cast<IFsiItem*>(this) : nullptr;
    }
    std::vector<ImageEntry>::iterator Find(const std::wstring& name) {
        return std::find_if(content_->entries.begin(), content_->entries.end(),
                            [&](const ImageEntry& entry) { return IsSameName(entry.name, name); });
    }

    std::shared_ptr<ImageContent> content_;
};

class FileSystemImage : public DispatchObject<IFileSystemImage> {
  public:
    HRESULT STDMETHODCALLTYPE get_Root(IFsiDirectoryItem** value) override {
        if (!value) return E_POINTER;
        *value = new RootItem(content_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_SessionStartBlock(LONG* value) override {
        return Give(static_cast<LONG>(startSector_), value);
    }
    HRESULT STDMETHODCALLTYPE put_SessionStartBlock(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_FreeMediaBlocks(LONG* value) override { return Give(content_->freeBlocks, value); }
    HRESULT STDMETHODCALLTYPE put_FreeMediaBlocks(LONG value) override {
        if (value != 0 && content_->UsedBlocks() > static_cast<std::uint64_t>(value))
            return AsResult(Mastering::ImageTooBig);
        content_->freeBlocks = value;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetMaxMediaBlocksFromDevice(IDiscRecorder2*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_UsedBlocks(LONG* value) override {
        return Give(static_cast<LONG>(content_->UsedBlocks()), value);
    }
    HRESULT STDMETHODCALLTYPE get_VolumeName(BSTR* value) override { return GiveText(label_, value); }
    HRESULT STDMETHODCALLTYPE put_VolumeName(BSTR value) override {
        const std::wstring label = value ? value : L"";
        const bool isAcceptable =
            label.size() <= 15 && std::all_of(label.begin(), label.end(), [](wchar_t character) {
                return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z') ||
                       (character >= L'0' && character <= L'9') || character == L'.' || character == L'_';
            });
        if (!isAcceptable) return AsResult(Mastering::ImageInvalidVolumeName);
        label_ = label;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_ImportedVolumeName(BSTR* value) override { return GiveText(label_, value); }
    HRESULT STDMETHODCALLTYPE get_BootImageOptions(IBootOptions**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_BootImageOptions(IBootOptions*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_FileCount(LONG* value) override {
        return Give(static_cast<LONG>(content_->entries.size()), value);
    }
    HRESULT STDMETHODCALLTYPE get_DirectoryCount(LONG* value) override { return Give<LONG>(0, value); }
    HRESULT STDMETHODCALLTYPE get_WorkingDirectory(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_WorkingDirectory(BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_ChangePoint(LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_StrictFileSystemCompliance(VARIANT_BOOL* value) override {
        return GiveFlag(false, value);
    }
    HRESULT STDMETHODCALLTYPE put_StrictFileSystemCompliance(VARIANT_BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_UseRestrictedCharacterSet(VARIANT_BOOL* value) override {
        return GiveFlag(false, value);
    }
    HRESULT STDMETHODCALLTYPE put_UseRestrictedCharacterSet(VARIANT_BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_FileSystemsToCreate(LONG* value) override {
        return Give(content_->fileSystems, value);
    }
    HRESULT STDMETHODCALLTYPE put_FileSystemsToCreate(LONG value) override {
        constexpr LONG plain = LONG{Mastering::Iso9660} | Mastering::Joliet;
        if (value != plain && value != Mastering::Udf) return E_INVALIDARG;
        content_->fileSystems = value;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_FileSystemsSupported(LONG* value) override {
        return Give(LONG{Mastering::Iso9660} | Mastering::Joliet | Mastering::Udf, value);
    }
    HRESULT STDMETHODCALLTYPE put_UDFRevision(LONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_UDFRevision(LONG* value) override { return Give<LONG>(0x102, value); }
    HRESULT STDMETHODCALLTYPE get_UDFRevisionsSupported(SAFEARRAY** value) override {
        return GiveNumbers({0x102}, value);
    }
    HRESULT STDMETHODCALLTYPE ChooseImageDefaults(IDiscRecorder2* recorder) override {
        const DiscRecorder* own = DiscRecorder::Of(recorder);
        if (!own) return E_INVALIDARG;
        return VirtualDisc(own->Drive()).IsPresent() ? S_OK : AsResult(Mastering::NoMedia);
    }
    HRESULT STDMETHODCALLTYPE ChooseImageDefaultsForMediaType(LONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE put_ISO9660InterchangeLevel(LONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_ISO9660InterchangeLevel(LONG* value) override { return Give<LONG>(1, value); }
    HRESULT STDMETHODCALLTYPE get_ISO9660InterchangeLevelsSupported(SAFEARRAY** value) override {
        return GiveNumbers({1}, value);
    }
    HRESULT STDMETHODCALLTYPE CreateResultImage(IFileSystemImageResult** value) override {
        if (!value) return E_POINTER;
        content_->isReadOnly = true;
        *value = new ImageResult(content_->HasOnlyUdf() ? LayOutUdf(content_->entries, label_)
                                                        : LayOutIso(content_->entries, label_, startSector_),
                                 startSector_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Exists(BSTR, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CalculateDiscIdentifier(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE IdentifyFileSystemsOnDisc(IDiscRecorder2* recorder, LONG* value) override {
        const DiscRecorder* own = DiscRecorder::Of(recorder);
        if (!own || !value) return E_INVALIDARG;
        const VirtualDrive drive = own->Drive();
        const VirtualDisc disc(drive);
        if (const HRESULT result = drive.Answer(disc); FAILED(result)) return result;
        const auto volume = ReadDiscVolume(disc.ImagePath());
        const LONG plain = LONG{Mastering::Iso9660} | Mastering::Joliet;
        *value = !volume ? 0 : volume->isUdf ? LONG{Mastering::Udf} : plain;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDefaultFileSystemForImport(LONG, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ImportFileSystem(LONG* value) override {
        if (!value) return E_POINTER;
        if (sessionDrive_.empty()) return AsResult(Mastering::ImageMultisessionNotSet);
        const VirtualDrive drive(sessionDrive_);
        const VirtualDisc disc(drive);
        if (const HRESULT result = drive.Answer(disc); FAILED(result)) return result;
        if (disc.LooksBlank()) return AsResult(Mastering::ImageEmptyDisc);
        const auto volume = ReadDiscVolume(disc.ImagePath());
        if (!volume || volume->isUdf) return AsResult(Mastering::ImageNoFileSystem);
        startSector_ = static_cast<std::uint32_t>(disc.UsedSectors());
        label_ = volume->label;
        for (const DiscFile& file : volume->files) {
            ImageEntry entry;
            entry.name = file.name;
            entry.sizeBytes = file.sizeBytes;
            GetSystemTime(&entry.modified);
            entry.earlierSector = file.extents.front().sector;
            content_->entries.push_back(std::move(entry));
        }
        if (content_->UsedBlocks() > static_cast<std::uint64_t>(content_->freeBlocks))
            return AsResult(Mastering::ImageSizeLimit);
        *value = content_->fileSystems = LONG{Mastering::Iso9660} | Mastering::Joliet;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ImportSpecificFileSystem(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RollbackToChangePoint(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockInChangePoint() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateDirectoryItem(BSTR, IFsiDirectoryItem**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateFileItem(BSTR, IFsiFileItem**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_VolumeNameUDF(BSTR* value) override { return GiveText(label_, value); }
    HRESULT STDMETHODCALLTYPE get_VolumeNameJoliet(BSTR* value) override { return GiveText(label_, value); }
    HRESULT STDMETHODCALLTYPE get_VolumeNameISO9660(BSTR* value) override { return GiveText(label_, value); }
    HRESULT STDMETHODCALLTYPE get_StageFiles(VARIANT_BOOL* value) override { return GiveFlag(false, value); }
    HRESULT STDMETHODCALLTYPE put_StageFiles(VARIANT_BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE get_MultisessionInterfaces(SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_MultisessionInterfaces(SAFEARRAY* value) override {
        return Session::In(value, sessionDrive_) ? S_OK : E_INVALIDARG;
    }

  private:
    std::shared_ptr<ImageContent> content_ = std::make_shared<ImageContent>();
    std::wstring label_ = L"NEW";
    std::wstring sessionDrive_;
    std::uint32_t startSector_ = 0;
};

} // namespace

IUnknown* MakeFileSystemImage() {
    return new FileSystemImage;
}
