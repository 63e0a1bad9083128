#pragma once

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>

/// The system's image mastering (version 2), as far as the program uses it: the compiler brings no header for it. The
/// order of the methods is that of the system's tables; nothing may be put between them. In property pairs, get and put
/// stand in the system's order, which differs from interface to interface.

// Enumerations are declared as LONG, their size in the system; their values are in MasteringCodes.h.

struct IBootOptions;
struct IEnumFsiItems;
struct IProgressItems;
struct IFileSystemImageResult;

struct IDiscMaster2 : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE get__NewEnum(IEnumVARIANT** ppunk) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Item(LONG index, BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Count(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsSupportedEnvironment(VARIANT_BOOL* value) = 0;
};

struct IDiscRecorder2 : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE EjectMedia() = 0;
    virtual HRESULT STDMETHODCALLTYPE CloseTray() = 0;
    virtual HRESULT STDMETHODCALLTYPE AcquireExclusiveAccess(VARIANT_BOOL force, BSTR clientName) = 0;
    virtual HRESULT STDMETHODCALLTYPE ReleaseExclusiveAccess() = 0;
    virtual HRESULT STDMETHODCALLTYPE DisableMcn() = 0;
    virtual HRESULT STDMETHODCALLTYPE EnableMcn() = 0;
    virtual HRESULT STDMETHODCALLTYPE InitializeDiscRecorder(BSTR recorderUniqueId) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ActiveDiscRecorder(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VendorId(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ProductId(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ProductRevision(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VolumeName(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VolumePathNames(SAFEARRAY** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DeviceCanLoadMedia(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_LegacyDeviceNumber(LONG* legacyDeviceNumber) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SupportedFeaturePages(SAFEARRAY** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CurrentFeaturePages(SAFEARRAY** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SupportedProfiles(SAFEARRAY** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CurrentProfiles(SAFEARRAY** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SupportedModePages(SAFEARRAY** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ExclusiveAccessOwner(BSTR* value) = 0;
};

struct IDiscFormat2 : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE IsRecorderSupported(IDiscRecorder2* recorder, VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE IsCurrentMediaSupported(IDiscRecorder2* recorder, VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MediaPhysicallyBlank(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MediaHeuristicallyBlank(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SupportedMediaTypes(SAFEARRAY** value) = 0;
};

struct IDiscFormat2Data : public IDiscFormat2 {
    virtual HRESULT STDMETHODCALLTYPE put_Recorder(IDiscRecorder2* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Recorder(IDiscRecorder2** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_BufferUnderrunFreeDisabled(VARIANT_BOOL value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_BufferUnderrunFreeDisabled(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_PostgapAlreadyInImage(VARIANT_BOOL value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_PostgapAlreadyInImage(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CurrentMediaStatus(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_WriteProtectStatus(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_TotalSectorsOnMedia(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FreeSectorsOnMedia(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_NextWritableAddress(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_StartAddressOfPreviousSession(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_LastWrittenAddressOfPreviousSession(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ForceMediaToBeClosed(VARIANT_BOOL value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ForceMediaToBeClosed(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_DisableConsumerDvdCompatibilityMode(VARIANT_BOOL value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DisableConsumerDvdCompatibilityMode(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CurrentPhysicalMediaType(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ClientName(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ClientName(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_RequestedWriteSpeed(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_RequestedRotationTypeIsPureCAV(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CurrentWriteSpeed(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CurrentRotationTypeIsPureCAV(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SupportedWriteSpeeds(SAFEARRAY** supportedSpeeds) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SupportedWriteSpeedDescriptors(SAFEARRAY** supportedSpeedDescriptors) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ForceOverwrite(VARIANT_BOOL value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ForceOverwrite(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MultisessionInterfaces(SAFEARRAY** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE Write(IStream* data) = 0;
    virtual HRESULT STDMETHODCALLTYPE CancelWrite() = 0;
    virtual HRESULT STDMETHODCALLTYPE SetWriteSpeed(LONG RequestedSectorsPerSecond,
                                                    VARIANT_BOOL RotationTypeIsPureCAV) = 0;
};

struct DDiscFormat2DataEvents : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Update(IDispatch* object, IDispatch* progress) = 0;
};

struct IWriteEngine2EventArgs : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE get_StartLba(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SectorCount(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_LastReadLba(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_LastWrittenLba(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_TotalSystemBuffer(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_UsedSystemBuffer(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FreeSystemBuffer(LONG* value) = 0;
};

struct IDiscFormat2DataEventArgs : public IWriteEngine2EventArgs {
    virtual HRESULT STDMETHODCALLTYPE get_ElapsedTime(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_RemainingTime(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_TotalTime(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CurrentAction(LONG* value) = 0;
};

struct IDiscFormat2Erase : public IDiscFormat2 {
    virtual HRESULT STDMETHODCALLTYPE put_Recorder(IDiscRecorder2* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Recorder(IDiscRecorder2** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FullErase(VARIANT_BOOL value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FullErase(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CurrentPhysicalMediaType(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ClientName(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ClientName(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE EraseMedia() = 0;
};

struct DDiscFormat2EraseEvents : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Update(IDispatch* object, LONG elapsedSeconds, LONG estimatedTotalSeconds) = 0;
};

struct IWriteSpeedDescriptor : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE get_MediaType(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_RotationTypeIsPureCAV(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_WriteSpeed(LONG* value) = 0;
};

struct IFsiItem : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FullPath(BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_CreationTime(DATE* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_CreationTime(DATE newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_LastAccessedTime(DATE* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_LastAccessedTime(DATE newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_LastModifiedTime(DATE* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_LastModifiedTime(DATE newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsHidden(VARIANT_BOOL* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsHidden(VARIANT_BOOL newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileSystemName(LONG fileSystem, BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileSystemPath(LONG fileSystem, BSTR* pVal) = 0;
};

struct IFsiFileItem : public IFsiItem {
    virtual HRESULT STDMETHODCALLTYPE get_DataSize(LONGLONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DataSize32BitLow(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DataSize32BitHigh(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Data(IStream** pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Data(IStream* newVal) = 0;
};

struct IFsiDirectoryItem : public IFsiItem {
    virtual HRESULT STDMETHODCALLTYPE get__NewEnum(IEnumVARIANT** NewEnum) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Item(BSTR path, IFsiItem** item) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Count(LONG* Count) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_EnumFsiItems(IEnumFsiItems** NewEnum) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddDirectory(BSTR path) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddFile(BSTR path, IStream* fileData) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddTree(BSTR sourceDirectory, VARIANT_BOOL includeBaseDirectory) = 0;
    virtual HRESULT STDMETHODCALLTYPE Add(IFsiItem* item) = 0;
    virtual HRESULT STDMETHODCALLTYPE Remove(BSTR path) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveTree(BSTR path) = 0;
};

struct IFileSystemImageResult : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE get_ImageStream(IStream** pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ProgressItems(IProgressItems** pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_TotalBlocks(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_BlockSize(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DiscId(BSTR* pVal) = 0;
};

/// What the system hands out for an overwritable disc that can be added to; only recognised, never called.
struct IMultisessionRandomWrite : public IDispatch {};

struct IFileSystemImage : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE get_Root(IFsiDirectoryItem** pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SessionStartBlock(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_SessionStartBlock(LONG newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FreeMediaBlocks(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FreeMediaBlocks(LONG newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetMaxMediaBlocksFromDevice(IDiscRecorder2* discRecorder) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_UsedBlocks(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VolumeName(BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_VolumeName(BSTR newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ImportedVolumeName(BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_BootImageOptions(IBootOptions** pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_BootImageOptions(IBootOptions* newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FileCount(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DirectoryCount(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_WorkingDirectory(BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_WorkingDirectory(BSTR newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ChangePoint(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_StrictFileSystemCompliance(VARIANT_BOOL* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_StrictFileSystemCompliance(VARIANT_BOOL newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_UseRestrictedCharacterSet(VARIANT_BOOL* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_UseRestrictedCharacterSet(VARIANT_BOOL newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FileSystemsToCreate(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FileSystemsToCreate(LONG newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FileSystemsSupported(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_UDFRevision(LONG newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_UDFRevision(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_UDFRevisionsSupported(SAFEARRAY** pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE ChooseImageDefaults(IDiscRecorder2* discRecorder) = 0;
    virtual HRESULT STDMETHODCALLTYPE ChooseImageDefaultsForMediaType(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ISO9660InterchangeLevel(LONG newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ISO9660InterchangeLevel(LONG* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ISO9660InterchangeLevelsSupported(SAFEARRAY** pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateResultImage(IFileSystemImageResult** resultStream) = 0;
    virtual HRESULT STDMETHODCALLTYPE Exists(BSTR fullPath, LONG* itemType) = 0;
    virtual HRESULT STDMETHODCALLTYPE CalculateDiscIdentifier(BSTR* discIdentifier) = 0;
    virtual HRESULT STDMETHODCALLTYPE IdentifyFileSystemsOnDisc(IDiscRecorder2* discRecorder, LONG* fileSystems) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDefaultFileSystemForImport(LONG fileSystems, LONG* importDefault) = 0;
    virtual HRESULT STDMETHODCALLTYPE ImportFileSystem(LONG* importedFileSystem) = 0;
    virtual HRESULT STDMETHODCALLTYPE ImportSpecificFileSystem(LONG fileSystemToUse) = 0;
    virtual HRESULT STDMETHODCALLTYPE RollbackToChangePoint(LONG changePoint) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockInChangePoint() = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDirectoryItem(BSTR name, IFsiDirectoryItem** newItem) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFileItem(BSTR name, IFsiFileItem** newItem) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VolumeNameUDF(BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VolumeNameJoliet(BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VolumeNameISO9660(BSTR* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_StageFiles(VARIANT_BOOL* pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_StageFiles(VARIANT_BOOL newVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MultisessionInterfaces(SAFEARRAY** pVal) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_MultisessionInterfaces(SAFEARRAY* newVal) = 0;
};

inline constexpr GUID CLSID_MsftDiscMaster2 = {
    0x2735412e, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
inline constexpr GUID CLSID_MsftDiscRecorder2 = {
    0x2735412d, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
inline constexpr GUID CLSID_MsftDiscFormat2Data = {
    0x2735412a, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
inline constexpr GUID CLSID_MsftDiscFormat2Erase = {
    0x2735412b, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
inline constexpr GUID CLSID_MsftFileSystemImage = {
    0x2c941fc5, 0x975b, 0x59be, {0xa9, 0x60, 0x9a, 0x2a, 0x26, 0x28, 0x53, 0xa5}};

/// The identifier of an interface.
template<class Interface>
inline constexpr GUID InterfaceId{};
template<>
inline constexpr GUID InterfaceId<IUnknown> = {
    0x00000000, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
template<>
inline constexpr GUID InterfaceId<IDispatch> = {
    0x00020400, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
template<>
inline constexpr GUID InterfaceId<IStream> = {
    0x0000000c, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
template<>
inline constexpr GUID InterfaceId<IConnectionPoint> = {
    0xb196b286, 0xbab4, 0x101a, {0xb6, 0x9c, 0x00, 0xaa, 0x00, 0x34, 0x1d, 0x07}};
template<>
inline constexpr GUID InterfaceId<IConnectionPointContainer> = {
    0xb196b284, 0xbab4, 0x101a, {0xb6, 0x9c, 0x00, 0xaa, 0x00, 0x34, 0x1d, 0x07}};
template<>
inline constexpr GUID InterfaceId<IDiscMaster2> = {
    0x27354130, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<IDiscRecorder2> = {
    0x27354133, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<IDiscFormat2> = {
    0x27354152, 0x8f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<IDiscFormat2Data> = {
    0x27354153, 0x9f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<DDiscFormat2DataEvents> = {
    0x2735413c, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<IWriteEngine2EventArgs> = {
    0x27354136, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<IDiscFormat2DataEventArgs> = {
    0x2735413d, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<IDiscFormat2Erase> = {
    0x27354156, 0x8f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<DDiscFormat2EraseEvents> = {
    0x2735413a, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<IWriteSpeedDescriptor> = {
    0x27354144, 0x7f64, 0x5b0f, {0x8f, 0x00, 0x5d, 0x77, 0xaf, 0xbe, 0x26, 0x1e}};
template<>
inline constexpr GUID InterfaceId<IMultisessionRandomWrite> = {
    0xb507ca23, 0x2204, 0x11dd, {0x96, 0x6a, 0x00, 0x1a, 0xa0, 0x1b, 0xbc, 0x58}};
template<>
inline constexpr GUID InterfaceId<IFsiItem> = {
    0x2c941fd9, 0x975b, 0x59be, {0xa9, 0x60, 0x9a, 0x2a, 0x26, 0x28, 0x53, 0xa5}};
template<>
inline constexpr GUID InterfaceId<IFsiFileItem> = {
    0x2c941fdb, 0x975b, 0x59be, {0xa9, 0x60, 0x9a, 0x2a, 0x26, 0x28, 0x53, 0xa5}};
template<>
inline constexpr GUID InterfaceId<IFsiDirectoryItem> = {
    0x2c941fdc, 0x975b, 0x59be, {0xa9, 0x60, 0x9a, 0x2a, 0x26, 0x28, 0x53, 0xa5}};
template<>
inline constexpr GUID InterfaceId<IFileSystemImageResult> = {
    0x2c941fd8, 0x975b, 0x59be, {0xa9, 0x60, 0x9a, 0x2a, 0x26, 0x28, 0x53, 0xa5}};
template<>
inline constexpr GUID InterfaceId<IFileSystemImage> = {
    0x2c941fe1, 0x975b, 0x59be, {0xa9, 0x60, 0x9a, 0x2a, 0x26, 0x28, 0x53, 0xa5}};
