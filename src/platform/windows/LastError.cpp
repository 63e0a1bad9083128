#include "platform/windows/LastError.h"

#include "platform/RuntimeError.h"

#include <windows.h>

ErrorNumber ErrorNumberOf(std::uint32_t systemError) {
    switch (systemError) {
    case ERROR_FILE_NOT_FOUND:
        return ErrorNumber::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_DIRECTORY:
        return ErrorNumber::PathNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_DIR_NOT_EMPTY:
        return ErrorNumber::PermissionDenied;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ErrorNumber::DiskFull;
    case ERROR_NOT_READY:
    case ERROR_WRONG_DISK:
    case ERROR_UNRECOGNIZED_VOLUME:
    case ERROR_UNRECOGNIZED_MEDIA:
    case ERROR_MEDIA_CHANGED:
    case ERROR_NO_MEDIA_IN_DRIVE:
        return ErrorNumber::DiskNotReady;
    case ERROR_CRC:
    case ERROR_SEEK:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_GEN_FAILURE:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_IO_DEVICE:
    case ERROR_DEVICE_NOT_CONNECTED:
        return ErrorNumber::DeviceIoError;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return ErrorNumber::OutOfMemory;
    default:
        return ErrorNumber::PathFileAccessError;
    }
}

void ThrowSystemError(std::uint32_t systemError) {
    throw RuntimeError(ErrorNumberOf(systemError));
}

void ThrowLastError() {
    const DWORD systemError = GetLastError();
    ThrowSystemError(systemError);
}
