#include "platform/windows/SystemLibrary.h"

#include <string>

namespace {

std::wstring InSystemFolder(const wchar_t* name) {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size())));
    return folder + L"\\" + name;
}

} // namespace

SystemLibrary::SystemLibrary(const wchar_t* name) {
    library_.Reset(LoadLibraryExW(InSystemFolder(name).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
}

void LoadLibrariesFromSystemOnly() {
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    constexpr DWORD system32Only = 0x800;
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    const auto setDirectories =
        reinterpret_cast<SetDirectories>(reinterpret_cast<void*>(GetProcAddress(kernel, "SetDefaultDllDirectories")));
    if (setDirectories != nullptr) setDirectories(system32Only);
    // Neither from the folder that the program was started in.
    SetDllDirectoryW(L"");
}
