#include "platform/windows/WindowsUserAccount.h"

#include "platform/windows/SystemLibrary.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

namespace {

constexpr DWORD ProfileBufferLength = 255;
// UNLEN of lmcons.h.
constexpr DWORD LongestAccountName = 256;

} // namespace

std::wstring WindowsUserAccount::Name() const {
    wchar_t name[LongestAccountName + 1] = {};
    DWORD length = LongestAccountName + 1;
    return GetUserNameW(name, &length) ? name : std::wstring();
}

std::wstring WindowsUserAccount::ProfileFolder() const {
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
