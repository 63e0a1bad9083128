#pragma once

#include <windows.h>

/// What this process has taken of the processors, in seconds: a test's time on a machine that may have other work.
inline double ProcessorSeconds() {
    FILETIME unused{};
    ULARGE_INTEGER kernel{};
    ULARGE_INTEGER user{};
    GetProcessTimes(GetCurrentProcess(), &unused, &unused, reinterpret_cast<FILETIME*>(&kernel),
                    reinterpret_cast<FILETIME*>(&user));
    constexpr double ticksPerSecond = 1e7;
    return static_cast<double>(kernel.QuadPart + user.QuadPart) / ticksPerSecond;
}
