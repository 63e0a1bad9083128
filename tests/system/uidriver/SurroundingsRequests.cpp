#include "Requests.h"

#include <windows.h>

#include <array>

namespace uidriver {

namespace {

std::wstring LocaleText(LCTYPE type) {
    std::array<wchar_t, 80> text{};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), static_cast<int>(text.size()));
    return text.data();
}

/// Not what GetVersionEx says: that depends on the manifest of the program that asks.
std::wstring Version() {
    const HMODULE system = GetModuleHandleW(L"ntdll.dll");
    const auto query = reinterpret_cast<LONG(WINAPI*)(OSVERSIONINFOW*)>(
        reinterpret_cast<void*>(GetProcAddress(system, "RtlGetVersion")));
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (query == nullptr || query(&version) != 0) throw RequestError("no version");
    return Number(version.dwMajorVersion) + L"." + Number(version.dwMinorVersion);
}

// surroundings: the user's language, the version of Windows, both code pages, the decimal separator
Rows Surroundings(const Row&) {
    return {{LocaleText(LOCALE_SNATIVELANGNAME), Version(), Number(GetACP()), Number(GetOEMCP()),
             LocaleText(LOCALE_SDECIMAL)}};
}

} // namespace

void AddSurroundingsRequests(RequestTable& table) {
    table[L"surroundings"] = Surroundings;
}

} // namespace uidriver
