#pragma once

#include <ctime>

/// What this process has taken of the processors, in seconds: the time of steps on a machine that may have other work.
/// Windows counts in steps of a sixty-fourth of a second.
inline double ProcessorSeconds() {
    timespec spent{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
    return static_cast<double>(spent.tv_sec) + static_cast<double>(spent.tv_nsec) / 1e9;
}
