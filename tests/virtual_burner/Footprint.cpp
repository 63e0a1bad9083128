#include "Footprint.h"

#include "BurnerBench.h"

#include "platform/windows/UniqueHandle.h"

#include <tlhelp32.h>

#include <cstring>
#include <ostream>
#include <vector>

namespace {

/// Counted in the system's list of all handles.
std::size_t HandleCount() {
    struct Entry {
        ULONG process;
        BYTE type;
        BYTE flags;
        USHORT handle;
        void* object;
        ULONG access;
    };
    constexpr ULONG systemHandles = 16;
    using Query = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<BYTE> answer(1 << 20);
    ULONG sizeBytes = 0;
    if (query(systemHandles, answer.data(), static_cast<ULONG>(answer.size()), &sizeBytes) < 0) return 0;
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

std::size_t ThreadCount() {
    const UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    std::size_t count = 0;
    for (BOOL isFound = Thread32First(snapshot.Get(), &entry); isFound; isFound = Thread32Next(snapshot.Get(), &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    return count;
}

std::size_t WindowCount() {
    std::size_t count = 0;
    for (HWND parent : {static_cast<HWND>(nullptr), HWND_MESSAGE}) {
        for (HWND window = nullptr; (window = FindWindowExW(parent, window, nullptr, nullptr)) != nullptr;) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            count += process == GetCurrentProcessId();
        }
    }
    return count;
}

/// Counted in the process's table of GDI handles, which the process's own environment block leads to.
std::size_t GdiObjectCount() {
    struct Entry {
        ULONGLONG object;
        ULONG owner;
        USHORT unique;
        BYTE type;
        BYTE flags;
        ULONGLONG userPointer;
    };
    constexpr std::size_t tableOffsetInBlock = 0xF8;
    constexpr std::size_t tableEntries = 0x10000;
    using Query = LONG(WINAPI*)(HANDLE, ULONG, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryInformationProcess")));
    struct {
        void* exitStatus;
        const BYTE* environmentBlock;
        void* rest[4];
    } basics{};
    constexpr ULONG basicInformation = 0;
    if (query(GetCurrentProcess(), basicInformation, &basics, sizeof basics, nullptr) < 0) return 0;
    const BYTE* table = nullptr;
    std::memcpy(&table, basics.environmentBlock + tableOffsetInBlock, sizeof table);
    std::size_t count = 0;
    for (std::size_t index = 0; table && index < tableEntries; ++index) {
        Entry entry{};
        std::memcpy(&entry, table + index * sizeof entry, sizeof entry);
        count += entry.type != 0;
    }
    return count;
}

} // namespace

Footprint Footprint::Now() {
    return {HandleCount(), ThreadCount(), WindowCount(), GdiObjectCount(), LiveBurnerObjects()};
}

std::ostream& operator<<(std::ostream& stream, const Footprint& footprint) {
    return stream << footprint.handles << " handles, " << footprint.threads << " threads, " << footprint.windows
                  << " windows, " << footprint.gdiObjects << " GDI objects, " << footprint.burnerObjects
                  << " objects of the burner";
}
