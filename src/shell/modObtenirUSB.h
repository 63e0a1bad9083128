#pragma once

#include "core/Application.h"
#include "platform/Files.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace modObtenirUSB {

/// `value` shifted left by 0 to 31 bits; what leaves the 32 bits is lost and bit 31 is the sign.
/// Throws 9 (subscript out of range) for any other number of bits.
std::int32_t ShiftLeft(std::int32_t value, int bits);

/// A device-control code from its four parts.
std::int32_t ControlCode(std::int32_t deviceType, std::int32_t function, std::int32_t method, std::int32_t access);

/// Whether the system is Windows NT version 6 (Vista) or later.
bool IsWinVista(const Application& app);

/// Whether any present device is run by the USB mass-storage service; false when the devices cannot be listed.
bool IsUsbStoragePresent(const Application& app);

/// Whether the device of a drive written "E:" sits on the USB bus and the user did not decline USB disks. From
/// Windows NT 6 on the user is asked once per run, as soon as a USB mass-storage device is present.
bool VérifierDriveUSB(Application& app, const std::wstring& lecteur);

/// Those letters of a drive list whose drive passes VérifierDriveUSB; one empty element when there is none.
std::vector<std::wstring> ScanDiskLetter(Application& app, const std::vector<std::wstring>& letters);

/// Files and bytes of a folder, sub-folders too when asked. Names that begin with "." are skipped; a missing folder
/// measures zero. `stillMeasuring`, where given, is called now and then while sub-folders are walked.
FolderMeasure FolderSize(const Application& app, const std::wstring& folder, bool areSubfoldersCounted,
                         const std::function<void()>& stillMeasuring = {});

} // namespace modObtenirUSB
