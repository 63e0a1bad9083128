#include "window/Footprint.h"

#include "win32/UniqueHandle.h"
#include "window/HandleCount.h"

#include <windows.h>

#include <tlhelp32.h>

namespace {

std::size_t ThreadCount() {
    const UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    std::size_t count = 0;
    for (BOOL isFound = Thread32First(snapshot.Get(), &entry); isFound; isFound = Thread32Next(snapshot.Get(), &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    return count;
}

std::size_t GdiObjectCount() {
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); count > 0) return count;
    // Wine knows an object by the lower half of its handle alone.
    std::size_t count = 0;
    for (UINT_PTR handle = 1; handle < 0x10000; ++handle)
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
    return count;
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<std::size_t*>(count);
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM count) {
    CountWindow(window, count);
    EnumChildWindows(window, CountWindow, count);
    return TRUE;
}

std::size_t WindowCount() {
    std::size_t count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWithChildren, reinterpret_cast<LPARAM>(&count));
    // Message-only windows are passed over by that.
    for (HWND window = nullptr; (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;)
        count += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
    return count;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const Footprint& footprint) {
    return stream << footprint.handles << " handles, " << footprint.threads << " threads, " << footprint.gdiObjects
                  << " GDI objects, " << footprint.windows << " windows";
}

Footprint FootprintNow() {
    return {HandleCount(GetCurrentProcess()), ThreadCount(), GdiObjectCount(), WindowCount()};
}
