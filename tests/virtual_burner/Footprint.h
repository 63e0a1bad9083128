#pragma once

#include <cstddef>
#include <iosfwd>

/// What this process holds of the system, counted where Wine really counts it: it answers 0 to the calls that ask for
/// one process's handles and objects.
struct Footprint {
    std::size_t handles = 0;
    std::size_t threads = 0;
    std::size_t windows = 0; ///< message-only ones included
    std::size_t gdiObjects = 0;
    long burnerObjects = 0;

    static Footprint Now();
    bool operator==(const Footprint&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Footprint& footprint);
