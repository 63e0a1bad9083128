#include "discutil/CdSpace.h"

#include <algorithm>

namespace {

constexpr std::uint64_t MegabyteBytes = 1048576;
constexpr std::uint64_t LargestCdMegabytes = 700;

} // namespace

std::uint64_t CdFreeMegabytes(std::uint64_t freeBytes) {
    return std::min(freeBytes / MegabyteBytes, LargestCdMegabytes);
}
