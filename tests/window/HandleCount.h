#pragma once

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <vector>

/// The handles that a process holds; 0 when they cannot be counted.
inline std::size_t HandleCount(HANDLE process) {
    DWORD known = 0;
    if (GetProcessHandleCount(process, &known) && known > 0) return known;
    // Wine has no count for one process, but the list of all handles.
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
    ULONG all = 0;
    std::memcpy(&all, answer.data(), sizeof all);
    std::size_t own = 0;
    for (ULONG index = 0; index < all; ++index) {
        Entry entry{};
        std::memcpy(&entry, answer.data() + alignof(Entry) + index * sizeof entry, sizeof entry);
        own += entry.process == GetProcessId(process);
    }
    return own;
}
