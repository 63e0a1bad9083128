#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the fuzzer where a promise of the code under test is broken, and says at which line.
inline void Require(bool isKept, int line = __builtin_LINE()) {
    if (isKept) return;
    std::fprintf(stderr, "broken promise at line %d\n", line);
    std::abort();
}
