#include "platform/windows/WindowsSystem.h"

#include "platform/Text.h"
#include "platform/windows/AwakeHold.h"
#include "platform/windows/SystemLibrary.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

namespace {

constexpr DWORD ProfileBufferLength = 255;
constexpr DWORD LongestAccountName = 256;
constexpr LCTYPE NativeLanguageName = 4;

std::wstring LocaleText(LCTYPE type) {
    wchar_t text[80] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 80);
    return text;
}

} // namespace

OsVersion WindowsSystem::Version() const {
    OSVERSIONINFOA version = {};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version)) return {};
    return {version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion};
}

std::optional<std::wstring> WindowsSystem::Environment(const std::wstring& name) const {
    std::wstring value;
    for (;;) {
        SetLastError(ERROR_SUCCESS);
        const DWORD length = GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
        if (length == 0 && GetLastError() != ERROR_SUCCESS) return std::nullopt;
        const bool isWhole = length < value.size() || length == 0;
        value.resize(length);
        if (isWhole) return value;
    }
}

std::wstring WindowsSystem::UserLanguageName() const {
    return LocaleText(NativeLanguageName);
}

std::wstring WindowsSystem::DecimalSeparator() const {
    return LocaleText(LOCALE_SDECIMAL);
}

std::wstring WindowsSystem::AbbreviatedMonth(int month) const {
    return LocaleText(LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month - 1));
}

std::wstring WindowsSystem::ProfileString(const std::wstring& file, const std::wstring& section,
                                          const std::wstring& key) const {
    std::string buffer(ProfileBufferLength, '\0');
    const DWORD length = GetPrivateProfileStringA(ToAnsi(section).c_str(), ToAnsi(key).c_str(), "", buffer.data(),
                                                  ProfileBufferLength, ToAnsi(file).c_str());
    return FromAnsi(buffer.substr(0, length));
}

std::wstring WindowsSystem::ProfileFolder() const {
    UniqueObject token;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.Receive())) return {};
    wchar_t folder[ProfileBufferLength] = {};
    DWORD length = ProfileBufferLength;
    using GetFolder = BOOL(WINAPI*)(HANDLE, LPWSTR, LPDWORD);
    const SystemLibrary profiles(L"userenv.dll");
    const auto getFolder = profiles.Find<GetFolder>("GetUserProfileDirectoryW");
    if (getFolder == nullptr || !getFolder(token.Get(), folder, &length)) return {};
    return folder;
}

std::wstring WindowsSystem::AccountName() const {
    wchar_t name[LongestAccountName + 1] = {};
    DWORD length = LongestAccountName + 1;
    return GetUserNameW(name, &length) ? name : std::wstring();
}

std::wstring WindowsSystem::ProgramFolder() const {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    const std::size_t cut = path.find_last_of(L'\\');
    if (cut == std::wstring::npos) return {};
    return path.substr(0, cut == 2 ? cut + 1 : cut);
}

LocalTime WindowsSystem::Now() const {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

double WindowsSystem::SecondsSinceMidnight() const {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return now.wHour * 3600.0 + now.wMinute * 60.0 + now.wSecond + now.wMilliseconds / 1000.0;
}

void WindowsSystem::Sleep(std::uint32_t milliseconds) {
    ::Sleep(milliseconds);
}

std::unique_ptr<Hold> WindowsSystem::KeepAwake() {
    return std::make_unique<AwakeHold>();
}
