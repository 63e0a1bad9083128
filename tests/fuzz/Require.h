#pragma once

#include <cstdlib>

/// Ends the fuzzer where a promise of the code under test is broken.
inline void Require(bool isKept) {
    if (!isKept) std::abort();
}
