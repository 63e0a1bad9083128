#pragma once

#include <cstddef>
#include <ostream>

/// What this process holds of the system.
struct Footprint {
    std::size_t handles = 0;
    std::size_t threads = 0;
    std::size_t gdiObjects = 0;
    std::size_t windows = 0; ///< of the calling thread, with children and message-only ones

    bool operator==(const Footprint&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Footprint& footprint);

/// Counted on Wine as well, which answers 0 to the calls that Windows has for this.
Footprint FootprintNow();
