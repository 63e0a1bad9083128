#include "Remote.h"
#include "Requests.h"

#include <windows.h>

#include <dbt.h>
#include <winioctl.h>

#include <cstring>
#include <vector>

namespace uidriver {

namespace {

// Wine's own way to give a folder of this machine a drive letter, and to take the letter away, while programs run.
constexpr DWORD DefineUnixDrive = CTL_CODE('m', 32, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS);

struct UnixDrive {
    ULONG sizeBytes = sizeof(UnixDrive);
    ULONG type = DRIVE_UNKNOWN;
    ULONG fileSystem = 0;
    DWORD serial = 0;
    ULONGLONG device = 0;
    WCHAR letter = 0;
    USHORT folderOffset = 0;
    USHORT deviceOffset = 0;
    USHORT labelOffset = 0;
};

// drive LETTER [FOLDER]: a removable disk with a folder of this machine behind it; without a folder the drive goes
Rows DefineDrive(const Row& fields) {
    UnixDrive drive;
    drive.letter = fields.at(1).at(0);
    const std::string folder = fields.size() > 2 ? ToUtf8(fields[2]) : std::string();
    if (!folder.empty()) {
        drive.type = DRIVE_REMOVABLE;
        drive.folderOffset = sizeof drive;
        drive.sizeBytes += static_cast<ULONG>(folder.size() + 1);
    }
    std::vector<char> request(sizeof drive + folder.size() + 1);
    std::memcpy(request.data(), &drive, sizeof drive);
    std::memcpy(request.data() + sizeof drive, folder.c_str(), folder.size() + 1);

    const HANDLE manager = CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (manager == INVALID_HANDLE_VALUE) throw RequestError("no mount manager");
    DWORD returned = 0;
    const BOOL isDone =
        DeviceIoControl(manager, DefineUnixDrive, request.data(), drive.sizeBytes, nullptr, 0, &returned, nullptr);
    CloseHandle(manager);
    if (!isDone) throw RequestError("the drive cannot be changed");
    return {};
}

// devicechange WINDOW EVENT LETTER: the message by which Windows tells of a drive, with the record that it always
// carries
Rows ChangeDevice(const Row& fields) {
    DEV_BROADCAST_VOLUME record{};
    record.dbcv_size = sizeof record;
    record.dbcv_devicetype = DBT_DEVTYP_VOLUME;
    record.dbcv_unitmask = 1u << ((fields.at(3).at(0) | 0x20) - L'a');
    Send(WindowAt(fields, 1), WM_DEVICECHANGE, static_cast<WPARAM>(NumberAt(fields, 2)),
         reinterpret_cast<LPARAM>(&record));
    return {};
}

} // namespace

void AddDriveRequests(RequestTable& table) {
    table[L"drive"] = DefineDrive;
    table[L"devicechange"] = ChangeDevice;
}

} // namespace uidriver
