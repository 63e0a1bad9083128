#include "Footprint.h"

#include <windows.h>

#include <cstring>
#include <vector>

namespace {

std::size_t HandlesInSystemList() {
    struct Entry {
        ULONG process;
        BYTE type;
        BYTE flags;
        USHORT handle;
        void* object;
        ULONG access;
    };
    constexpr ULONG SystemHandles = 16;
    using Query = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<BYTE> answer(1 << 20);
    ULONG sizeBytes = 0;
    if (query(SystemHandles, answer.data(), static_cast<ULONG>(answer.size()), &sizeBytes) < 0) return 0;
    ULONG count = 0;
    std::memcpy(&count, answer.data(), sizeof count);
    std::size_t own = 0;
    for (ULONG index = 0; index < count; ++index) {
        Entry entry{};
        std::memcpy(&entry, answer.data() + alignof(Entry) + index * sizeof entry, sizeof entry);
        own += entry.process == GetCurrentProcessId();
    }
    return own;
}

std::size_t HandleCount() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count > 0 ? count : HandlesInSystemList();
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
    return count;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const Footprint& footprint) {
    return stream << footprint.handles << " handles, " << footprint.gdiObjects << " GDI objects, " << footprint.windows
                  << " windows";
}

Footprint FootprintNow() {
    return {HandleCount(), GdiObjectCount(), WindowCount()};
}
