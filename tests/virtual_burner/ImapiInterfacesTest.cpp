// Every method stands where the system's own tables have it: a method that moved would call another one there.
#include "platform/windows/discs/ImapiInterfaces.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>

namespace {

/// The place of a virtual method in its table, as the compiler encodes it in a pointer to the method.
template<typename Method>
int Slot(Method method) {
    std::intptr_t encoded = 0;
    static_assert(sizeof method >= sizeof encoded);
    std::memcpy(&encoded, &method, sizeof encoded);
    return static_cast<int>((encoded - 1) / static_cast<std::intptr_t>(sizeof(void*)));
}

TEST(ImapiInterfaces, MethodsOfIDiscMaster2StandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IDiscMaster2::get__NewEnum), 7);
    EXPECT_EQ(Slot(&IDiscMaster2::get_Item), 8);
    EXPECT_EQ(Slot(&IDiscMaster2::get_Count), 9);
    EXPECT_EQ(Slot(&IDiscMaster2::get_IsSupportedEnvironment), 10);
}

TEST(ImapiInterfaces, MethodsOfIDiscRecorder2StandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IDiscRecorder2::EjectMedia), 7);
    EXPECT_EQ(Slot(&IDiscRecorder2::CloseTray), 8);
    EXPECT_EQ(Slot(&IDiscRecorder2::AcquireExclusiveAccess), 9);
    EXPECT_EQ(Slot(&IDiscRecorder2::ReleaseExclusiveAccess), 10);
    EXPECT_EQ(Slot(&IDiscRecorder2::DisableMcn), 11);
    EXPECT_EQ(Slot(&IDiscRecorder2::EnableMcn), 12);
    EXPECT_EQ(Slot(&IDiscRecorder2::InitializeDiscRecorder), 13);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_ActiveDiscRecorder), 14);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_VendorId), 15);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_ProductId), 16);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_ProductRevision), 17);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_VolumeName), 18);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_VolumePathNames), 19);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_DeviceCanLoadMedia), 20);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_LegacyDeviceNumber), 21);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_SupportedFeaturePages), 22);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_CurrentFeaturePages), 23);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_SupportedProfiles), 24);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_CurrentProfiles), 25);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_SupportedModePages), 26);
    EXPECT_EQ(Slot(&IDiscRecorder2::get_ExclusiveAccessOwner), 27);
}

TEST(ImapiInterfaces, MethodsOfIDiscFormat2StandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IDiscFormat2::IsRecorderSupported), 7);
    EXPECT_EQ(Slot(&IDiscFormat2::IsCurrentMediaSupported), 8);
    EXPECT_EQ(Slot(&IDiscFormat2::get_MediaPhysicallyBlank), 9);
    EXPECT_EQ(Slot(&IDiscFormat2::get_MediaHeuristicallyBlank), 10);
    EXPECT_EQ(Slot(&IDiscFormat2::get_SupportedMediaTypes), 11);
}

TEST(ImapiInterfaces, MethodsOfIDiscFormat2DataStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IDiscFormat2Data::put_Recorder), 12);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_Recorder), 13);
    EXPECT_EQ(Slot(&IDiscFormat2Data::put_BufferUnderrunFreeDisabled), 14);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_BufferUnderrunFreeDisabled), 15);
    EXPECT_EQ(Slot(&IDiscFormat2Data::put_PostgapAlreadyInImage), 16);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_PostgapAlreadyInImage), 17);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_CurrentMediaStatus), 18);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_WriteProtectStatus), 19);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_TotalSectorsOnMedia), 20);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_FreeSectorsOnMedia), 21);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_NextWritableAddress), 22);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_StartAddressOfPreviousSession), 23);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_LastWrittenAddressOfPreviousSession), 24);
    EXPECT_EQ(Slot(&IDiscFormat2Data::put_ForceMediaToBeClosed), 25);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_ForceMediaToBeClosed), 26);
    EXPECT_EQ(Slot(&IDiscFormat2Data::put_DisableConsumerDvdCompatibilityMode), 27);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_DisableConsumerDvdCompatibilityMode), 28);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_CurrentPhysicalMediaType), 29);
    EXPECT_EQ(Slot(&IDiscFormat2Data::put_ClientName), 30);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_ClientName), 31);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_RequestedWriteSpeed), 32);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_RequestedRotationTypeIsPureCAV), 33);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_CurrentWriteSpeed), 34);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_CurrentRotationTypeIsPureCAV), 35);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_SupportedWriteSpeeds), 36);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_SupportedWriteSpeedDescriptors), 37);
    EXPECT_EQ(Slot(&IDiscFormat2Data::put_ForceOverwrite), 38);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_ForceOverwrite), 39);
    EXPECT_EQ(Slot(&IDiscFormat2Data::get_MultisessionInterfaces), 40);
    EXPECT_EQ(Slot(&IDiscFormat2Data::Write), 41);
    EXPECT_EQ(Slot(&IDiscFormat2Data::CancelWrite), 42);
    EXPECT_EQ(Slot(&IDiscFormat2Data::SetWriteSpeed), 43);
}

TEST(ImapiInterfaces, MethodsOfDDiscFormat2DataEventsStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&DDiscFormat2DataEvents::Update), 7);
}

TEST(ImapiInterfaces, MethodsOfIWriteEngine2EventArgsStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IWriteEngine2EventArgs::get_StartLba), 7);
    EXPECT_EQ(Slot(&IWriteEngine2EventArgs::get_SectorCount), 8);
    EXPECT_EQ(Slot(&IWriteEngine2EventArgs::get_LastReadLba), 9);
    EXPECT_EQ(Slot(&IWriteEngine2EventArgs::get_LastWrittenLba), 10);
    EXPECT_EQ(Slot(&IWriteEngine2EventArgs::get_TotalSystemBuffer), 11);
    EXPECT_EQ(Slot(&IWriteEngine2EventArgs::get_UsedSystemBuffer), 12);
    EXPECT_EQ(Slot(&IWriteEngine2EventArgs::get_FreeSystemBuffer), 13);
}

TEST(ImapiInterfaces, MethodsOfIDiscFormat2DataEventArgsStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IDiscFormat2DataEventArgs::get_ElapsedTime), 14);
    EXPECT_EQ(Slot(&IDiscFormat2DataEventArgs::get_RemainingTime), 15);
    EXPECT_EQ(Slot(&IDiscFormat2DataEventArgs::get_TotalTime), 16);
    EXPECT_EQ(Slot(&IDiscFormat2DataEventArgs::get_CurrentAction), 17);
}

TEST(ImapiInterfaces, MethodsOfIDiscFormat2EraseStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IDiscFormat2Erase::put_Recorder), 12);
    EXPECT_EQ(Slot(&IDiscFormat2Erase::get_Recorder), 13);
    EXPECT_EQ(Slot(&IDiscFormat2Erase::put_FullErase), 14);
    EXPECT_EQ(Slot(&IDiscFormat2Erase::get_FullErase), 15);
    EXPECT_EQ(Slot(&IDiscFormat2Erase::get_CurrentPhysicalMediaType), 16);
    EXPECT_EQ(Slot(&IDiscFormat2Erase::put_ClientName), 17);
    EXPECT_EQ(Slot(&IDiscFormat2Erase::get_ClientName), 18);
    EXPECT_EQ(Slot(&IDiscFormat2Erase::EraseMedia), 19);
}

TEST(ImapiInterfaces, MethodsOfDDiscFormat2EraseEventsStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&DDiscFormat2EraseEvents::Update), 7);
}

TEST(ImapiInterfaces, MethodsOfIWriteSpeedDescriptorStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IWriteSpeedDescriptor::get_MediaType), 7);
    EXPECT_EQ(Slot(&IWriteSpeedDescriptor::get_RotationTypeIsPureCAV), 8);
    EXPECT_EQ(Slot(&IWriteSpeedDescriptor::get_WriteSpeed), 9);
}

TEST(ImapiInterfaces, MethodsOfIFsiItemStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IFsiItem::get_Name), 7);
    EXPECT_EQ(Slot(&IFsiItem::get_FullPath), 8);
    EXPECT_EQ(Slot(&IFsiItem::get_CreationTime), 9);
    EXPECT_EQ(Slot(&IFsiItem::put_CreationTime), 10);
    EXPECT_EQ(Slot(&IFsiItem::get_LastAccessedTime), 11);
    EXPECT_EQ(Slot(&IFsiItem::put_LastAccessedTime), 12);
    EXPECT_EQ(Slot(&IFsiItem::get_LastModifiedTime), 13);
    EXPECT_EQ(Slot(&IFsiItem::put_LastModifiedTime), 14);
    EXPECT_EQ(Slot(&IFsiItem::get_IsHidden), 15);
    EXPECT_EQ(Slot(&IFsiItem::put_IsHidden), 16);
    EXPECT_EQ(Slot(&IFsiItem::FileSystemName), 17);
    EXPECT_EQ(Slot(&IFsiItem::FileSystemPath), 18);
}

TEST(ImapiInterfaces, MethodsOfIFsiFileItemStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IFsiFileItem::get_DataSize), 19);
    EXPECT_EQ(Slot(&IFsiFileItem::get_DataSize32BitLow), 20);
    EXPECT_EQ(Slot(&IFsiFileItem::get_DataSize32BitHigh), 21);
    EXPECT_EQ(Slot(&IFsiFileItem::get_Data), 22);
    EXPECT_EQ(Slot(&IFsiFileItem::put_Data), 23);
}

TEST(ImapiInterfaces, MethodsOfIFsiDirectoryItemStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IFsiDirectoryItem::get__NewEnum), 19);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::get_Item), 20);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::get_Count), 21);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::get_EnumFsiItems), 22);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::AddDirectory), 23);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::AddFile), 24);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::AddTree), 25);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::Add), 26);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::Remove), 27);
    EXPECT_EQ(Slot(&IFsiDirectoryItem::RemoveTree), 28);
}

TEST(ImapiInterfaces, MethodsOfIFileSystemImageResultStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IFileSystemImageResult::get_ImageStream), 7);
    EXPECT_EQ(Slot(&IFileSystemImageResult::get_ProgressItems), 8);
    EXPECT_EQ(Slot(&IFileSystemImageResult::get_TotalBlocks), 9);
    EXPECT_EQ(Slot(&IFileSystemImageResult::get_BlockSize), 10);
    EXPECT_EQ(Slot(&IFileSystemImageResult::get_DiscId), 11);
}

TEST(ImapiInterfaces, MethodsOfIFileSystemImageStandInTheSystemsOrder) {
    EXPECT_EQ(Slot(&IFileSystemImage::get_Root), 7);
    EXPECT_EQ(Slot(&IFileSystemImage::get_SessionStartBlock), 8);
    EXPECT_EQ(Slot(&IFileSystemImage::put_SessionStartBlock), 9);
    EXPECT_EQ(Slot(&IFileSystemImage::get_FreeMediaBlocks), 10);
    EXPECT_EQ(Slot(&IFileSystemImage::put_FreeMediaBlocks), 11);
    EXPECT_EQ(Slot(&IFileSystemImage::SetMaxMediaBlocksFromDevice), 12);
    EXPECT_EQ(Slot(&IFileSystemImage::get_UsedBlocks), 13);
    EXPECT_EQ(Slot(&IFileSystemImage::get_VolumeName), 14);
    EXPECT_EQ(Slot(&IFileSystemImage::put_VolumeName), 15);
    EXPECT_EQ(Slot(&IFileSystemImage::get_ImportedVolumeName), 16);
    EXPECT_EQ(Slot(&IFileSystemImage::get_BootImageOptions), 17);
    EXPECT_EQ(Slot(&IFileSystemImage::put_BootImageOptions), 18);
    EXPECT_EQ(Slot(&IFileSystemImage::get_FileCount), 19);
    EXPECT_EQ(Slot(&IFileSystemImage::get_DirectoryCount), 20);
    EXPECT_EQ(Slot(&IFileSystemImage::get_WorkingDirectory), 21);
    EXPECT_EQ(Slot(&IFileSystemImage::put_WorkingDirectory), 22);
    EXPECT_EQ(Slot(&IFileSystemImage::get_ChangePoint), 23);
    EXPECT_EQ(Slot(&IFileSystemImage::get_StrictFileSystemCompliance), 24);
    EXPECT_EQ(Slot(&IFileSystemImage::put_StrictFileSystemCompliance), 25);
    EXPECT_EQ(Slot(&IFileSystemImage::get_UseRestrictedCharacterSet), 26);
    EXPECT_EQ(Slot(&IFileSystemImage::put_UseRestrictedCharacterSet), 27);
    EXPECT_EQ(Slot(&IFileSystemImage::get_FileSystemsToCreate), 28);
    EXPECT_EQ(Slot(&IFileSystemImage::put_FileSystemsToCreate), 29);
    EXPECT_EQ(Slot(&IFileSystemImage::get_FileSystemsSupported), 30);
    EXPECT_EQ(Slot(&IFileSystemImage::put_UDFRevision), 31);
    EXPECT_EQ(Slot(&IFileSystemImage::get_UDFRevision), 32);
    EXPECT_EQ(Slot(&IFileSystemImage::get_UDFRevisionsSupported), 33);
    EXPECT_EQ(Slot(&IFileSystemImage::ChooseImageDefaults), 34);
    EXPECT_EQ(Slot(&IFileSystemImage::ChooseImageDefaultsForMediaType), 35);
    EXPECT_EQ(Slot(&IFileSystemImage::put_ISO9660InterchangeLevel), 36);
    EXPECT_EQ(Slot(&IFileSystemImage::get_ISO9660InterchangeLevel), 37);
    EXPECT_EQ(Slot(&IFileSystemImage::get_ISO9660InterchangeLevelsSupported), 38);
    EXPECT_EQ(Slot(&IFileSystemImage::CreateResultImage), 39);
    EXPECT_EQ(Slot(&IFileSystemImage::Exists), 40);
    EXPECT_EQ(Slot(&IFileSystemImage::CalculateDiscIdentifier), 41);
    EXPECT_EQ(Slot(&IFileSystemImage::IdentifyFileSystemsOnDisc), 42);
    EXPECT_EQ(Slot(&IFileSystemImage::GetDefaultFileSystemForImport), 43);
    EXPECT_EQ(Slot(&IFileSystemImage::ImportFileSystem), 44);
    EXPECT_EQ(Slot(&IFileSystemImage::ImportSpecificFileSystem), 45);
    EXPECT_EQ(Slot(&IFileSystemImage::RollbackToChangePoint), 46);
    EXPECT_EQ(Slot(&IFileSystemImage::LockInChangePoint), 47);
    EXPECT_EQ(Slot(&IFileSystemImage::CreateDirectoryItem), 48);
    EXPECT_EQ(Slot(&IFileSystemImage::CreateFileItem), 49);
    EXPECT_EQ(Slot(&IFileSystemImage::get_VolumeNameUDF), 50);
    EXPECT_EQ(Slot(&IFileSystemImage::get_VolumeNameJoliet), 51);
    EXPECT_EQ(Slot(&IFileSystemImage::get_VolumeNameISO9660), 52);
    EXPECT_EQ(Slot(&IFileSystemImage::get_StageFiles), 53);
    EXPECT_EQ(Slot(&IFileSystemImage::put_StageFiles), 54);
    EXPECT_EQ(Slot(&IFileSystemImage::get_MultisessionInterfaces), 55);
    EXPECT_EQ(Slot(&IFileSystemImage::put_MultisessionInterfaces), 56);
}

} // namespace
