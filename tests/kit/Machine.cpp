#include "Machine.h"

#include "uidriver/Protocol.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <winioctl.h>

#include <vector>

namespace kit {

namespace {

constexpr const wchar_t* VersionKey = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

std::wstring RegistryText(HKEY root, const wchar_t* key, const wchar_t* name) {
    wchar_t text[256] = {};
    DWORD bytes = sizeof text;
    return RegGetValueW(root, key, name, RRF_RT_REG_SZ, nullptr, text, &bytes) == 0 ? text : L"";
}

DWORD RegistryNumber(const wchar_t* key, const wchar_t* name) {
    DWORD number = 0;
    DWORD bytes = sizeof number;
    RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_DWORD, nullptr, &number, &bytes);
    return number;
}

template<class Function>
Function SystemFunction(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name)));
}

/// The version that the system has, not the one that it shows to older programs.
std::wstring WindowsVersion() {
    using Query = LONG(WINAPI*)(OSVERSIONINFOW*);
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    SystemFunction<Query>("RtlGetVersion")(&version);
    return RegistryText(HKEY_LOCAL_MACHINE, VersionKey, L"ProductName") + L" " +
           RegistryText(HKEY_LOCAL_MACHINE, VersionKey, L"DisplayVersion") + L", " +
           std::to_wstring(version.dwMajorVersion) + L"." + std::to_wstring(version.dwMinorVersion) + L"." +
           std::to_wstring(version.dwBuildNumber) + L"." + std::to_wstring(RegistryNumber(VersionKey, L"UBR"));
}

std::wstring WineVersion() {
    using Query = const char*(CDECL*)();
    return uidriver::FromUtf8(SystemFunction<Query>("wine_get_version")());
}

std::wstring Screen() {
    const WindowContext screen(nullptr);
    const int dots = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    return std::to_wstring(dots * 100 / 96) + L" %, " + std::to_wstring(GetSystemMetrics(SM_CXSCREEN)) + L" x " +
           std::to_wstring(GetSystemMetrics(SM_CYSCREEN)) + L", " +
           std::to_wstring(GetDeviceCaps(screen.Get(), BITSPIXEL)) + L" bits, " +
           std::to_wstring(GetSystemMetrics(SM_CMONITORS)) + Say({L" écran(s)", L" screen(s)"}) +
           (GetSystemMetrics(SM_REMOTESESSION) != 0 ? Say({L", à distance", L", remote"}) : L"");
}

std::wstring Contrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 ? Say({L"contraste élevé", L"high contrast"})
                                                        : Say({L"ordinaires", L"ordinary"});
}

std::wstring BusOf(const std::wstring& drive) {
    const UniqueFile device(CreateFileW((L"\\\\.\\" + drive).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    if (!device) return Say({L"refusé", L"refused"});
    STORAGE_PROPERTY_QUERY query{};
    query.PropertyId = StorageDeviceProperty;
    query.QueryType = PropertyStandardQuery;
    std::vector<BYTE> answer(4096);
    DWORD returned = 0;
    if (!DeviceIoControl(device.Get(), IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, answer.data(),
                         static_cast<DWORD>(answer.size()), &returned, nullptr))
        return Say({L"sans réponse", L"no answer"});
    return std::to_wstring(reinterpret_cast<const STORAGE_DEVICE_DESCRIPTOR*>(answer.data())->BusType);
}

void TellDrives(Report& report) {
    constexpr DWORD letters = 26;
    for (DWORD index = 0; index < letters; ++index) {
        if ((GetLogicalDrives() >> index & 1) == 0) continue;
        const std::wstring drive = {static_cast<wchar_t>(L'A' + index), L':'};
        const UINT type = GetDriveTypeW((drive + L"\\").c_str());
        wchar_t system[64] = {};
        if (type == DRIVE_FIXED || type == DRIVE_REMOVABLE)
            GetVolumeInformationW((drive + L"\\").c_str(), nullptr, 0, nullptr, nullptr, nullptr, system, 64);
        const bool hasBus = type != DRIVE_REMOTE && type != DRIVE_RAMDISK;
        report.Tell({L"lecteur", L"drive"}, drive + L" type " + std::to_wstring(type) + L", bus " +
                                                (hasBus ? BusOf(drive) : L"-") + L", " + system);
    }
}

} // namespace

bool IsWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

bool IsElevated() {
    UniqueObject token;
    TOKEN_ELEVATION elevation{};
    DWORD bytes = 0;
    return OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.Receive()) &&
           GetTokenInformation(token.Get(), TokenElevation, &elevation, sizeof elevation, &bytes) &&
           elevation.TokenIsElevated != 0;
}

void TellMachine(Report& report) {
    report.Begin({L"L'ordinateur", L"The computer"});
    report.Tell({L"Windows", L"Windows"}, WindowsVersion());
    report.Tell({L"Windows véritable", L"Real Windows"},
                IsWine() ? Say({L"NON : Wine ", L"NO: Wine "}) + WineVersion() : Say({L"oui", L"yes"}));
    report.Tell({L"Langue", L"Language"},
                Say({L"français", L"English"}) + L", " + std::to_wstring(GetUserDefaultLCID()));
    report.Tell({L"Pages de codes", L"Code pages"},
                L"ANSI " + std::to_wstring(GetACP()) + L", OEM " + std::to_wstring(GetOEMCP()));
    report.Tell({L"Échelle et écran", L"Scale and screen"}, Screen());
    report.Tell({L"Couleurs", L"Colours"}, Contrast());
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    MEMORYSTATUSEX memory{};
    memory.dwLength = sizeof memory;
    GlobalMemoryStatusEx(&memory);
    report.Tell({L"Processeurs et mémoire", L"Processors and memory"},
                std::to_wstring(system.dwNumberOfProcessors) + L", " +
                    std::to_wstring(memory.ullTotalPhys / 1024 / 1024) + L" MB");
    report.Tell({L"Droits d'administrateur", L"Administrator rights"},
                IsElevated() ? Say({L"oui (mieux vaut sans)", L"yes (better without)"}) : Say({L"non", L"no"}));
    TellDrives(report);
}

} // namespace kit
