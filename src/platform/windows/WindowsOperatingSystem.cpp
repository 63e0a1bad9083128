#include "platform/windows/WindowsOperatingSystem.h"

#include <windows.h>

OsVersion WindowsOperatingSystem::Version() const {
    OSVERSIONINFOA version = {};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version)) return {};
    return {version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion};
}
