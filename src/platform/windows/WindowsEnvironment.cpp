#include "platform/windows/WindowsEnvironment.h"

#include <windows.h>

std::optional<std::wstring> WindowsEnvironment::Variable(const std::wstring& name) const {
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

std::wstring WindowsEnvironment::ProgramFolder() const {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    // A path that is cut fills the buffer; nothing else tells.
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    const std::size_t cut = path.find_last_of(L'\\');
    if (cut == std::wstring::npos) return {};
    return path.substr(0, cut == 2 ? cut + 1 : cut);
}
