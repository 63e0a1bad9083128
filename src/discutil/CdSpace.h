#pragma once

#include <cstdint>

/// Whole megabytes that a CD offers. Writers report more than can be relied on.
std::uint64_t CdFreeMegabytes(std::uint64_t freeBytes);
