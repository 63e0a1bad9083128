#include "Footprint.h"

#include "HandleCount.h"

#include <windows.h>

namespace {

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
    return {HandleCount(GetCurrentProcess()), GdiObjectCount(), WindowCount()};
}
