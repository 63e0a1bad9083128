#pragma once

#include "platform/discs/DiscFamily.h"

#include <cstdint>
#include <vector>

/// The write speeds of a drive for the disc in it. The system counts sectors per second, the windows multiples of the
/// family's single speed: whole ones for a CD, tenths for a DVD.
class DiscSpeeds {
  public:
    /// The customary speeds of the family, for a drive that names none.
    explicit DiscSpeeds(DiscFamily family);
    /// `sectorsPerSecond` in any order; empty gives the customary ones.
    DiscSpeeds(DiscFamily family, std::vector<std::uint32_t> sectorsPerSecond);

    /// The speed nearest to `speed`, the slower of two equally near ones.
    double Nearest(double speed) const;
    double Fastest() const;
    /// What the system is told for the speed nearest to `speed`.
    std::int32_t SectorsPerSecond(double speed) const;

  private:
    struct Entry {
        double speed;
        std::uint32_t sectorsPerSecond;
    };

    const Entry& NearestEntry(double speed) const;

    std::vector<Entry> entries_; ///< slowest first, never empty
};
