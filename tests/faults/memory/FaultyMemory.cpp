// Loaded into the shipped program while it runs: from then on its allocations can be told to fail. Those that Windows
// makes for itself are left alone.
#include "faults/memory/AllocationPlan.h"

#include <cstdlib>
#include <cstring>

namespace {

AllocationPlan* plan = nullptr;

using Malloc = void*(__cdecl*)(std::size_t);
using Calloc = void*(__cdecl*)(std::size_t, std::size_t);
using Realloc = void*(__cdecl*)(void*, std::size_t);

Malloc realMalloc = nullptr;
Calloc realCalloc = nullptr;
Realloc realRealloc = nullptr;

bool HasToFail() {
    const LONG first = plan->first;
    if (first == 0) return false;
    const LONG number = InterlockedIncrement(&plan->made);
    if (number < first || number > plan->last) return false;
    InterlockedIncrement(&plan->failed);
    return true;
}

void* __cdecl FaultyMalloc(std::size_t size) {
    return HasToFail() ? nullptr : realMalloc(size);
}

void* __cdecl FaultyCalloc(std::size_t count, std::size_t size) {
    return HasToFail() ? nullptr : realCalloc(count, size);
}

void* __cdecl FaultyRealloc(void* memory, std::size_t size) {
    return HasToFail() ? nullptr : realRealloc(memory, size);
}

/// Has the program's calls of a function go to another one; gives the one that was called.
template<typename Function>
void Redirect(void** place, Function& real, Function instead) {
    DWORD protection = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection);
    std::memcpy(&real, place, sizeof real);
    std::memcpy(place, &instead, sizeof instead);
    VirtualProtect(place, sizeof *place, protection, &protection);
}

void RedirectAll() {
    auto* const base = reinterpret_cast<char*>(GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports); library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* places = reinterpret_cast<void**>(base + library->FirstThunk);
        for (int at = 0; names[at].u1.AddressOfData != 0; ++at) {
            if (IMAGE_SNAP_BY_ORDINAL(names[at].u1.Ordinal)) continue;
            const char* name = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names[at].u1.AddressOfData)->Name;
            if (std::strcmp(name, "malloc") == 0) Redirect<Malloc>(&places[at], realMalloc, FaultyMalloc);
            if (std::strcmp(name, "calloc") == 0) Redirect<Calloc>(&places[at], realCalloc, FaultyCalloc);
            if (std::strcmp(name, "realloc") == 0) Redirect<Realloc>(&places[at], realRealloc, FaultyRealloc);
        }
    }
}

} // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    const HANDLE section = OpenFileMappingW(FILE_MAP_WRITE, FALSE, NameOfAllocationPlan(GetCurrentProcessId()).c_str());
    plan = static_cast<AllocationPlan*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, sizeof(AllocationPlan)));
    if (plan == nullptr) return FALSE;
    RedirectAll();
    return TRUE;
}
