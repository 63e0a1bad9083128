// The thread library asks for GetTickCount64, which Windows XP lacks: the program would not even load there. What it
// finds here in the place of that import counts the same milliseconds.

#include <windows.h>

namespace {

ULONGLONG WINAPI MillisecondsSinceStart() {
    LARGE_INTEGER frequency = {};
    LARGE_INTEGER counter = {};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&counter);
    const auto perSecond = static_cast<ULONGLONG>(frequency.QuadPart);
    const auto ticks = static_cast<ULONGLONG>(counter.QuadPart);
    return ticks / perSecond * 1000 + ticks % perSecond * 1000 / perSecond;
}

} // namespace

extern "C" {
extern const decltype(&MillisecondsSinceStart) __imp_GetTickCount64;                   // NOLINT: the linker's own name
const decltype(&MillisecondsSinceStart) __imp_GetTickCount64 = MillisecondsSinceStart; // NOLINT
}
