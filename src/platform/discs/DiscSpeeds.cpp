#include "platform/discs/DiscSpeeds.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double CdSectorsPerSecond = 75;
constexpr double DvdSectorsPerSecond = 1385000.0 / 2048;

double Shown(DiscFamily family, std::uint32_t sectorsPerSecond) {
    // Drives count in kB/s and what is left after conversion is a little off: 3599 is 48 times.
    if (family == DiscFamily::Cd) return std::round(sectorsPerSecond / CdSectorsPerSecond);
    return std::round(sectorsPerSecond / DvdSectorsPerSecond * 10) / 10;
}

std::vector<std::uint32_t> Customary(DiscFamily family) {
    constexpr double cd[] = {1, 2, 4, 8, 10, 12, 16, 20, 24, 32, 40, 48, 52};
    constexpr double dvd[] = {1, 2, 2.4, 4, 6, 8, 12, 16, 18, 20};
    std::vector<std::uint32_t> sectors;
    if (family == DiscFamily::Cd)
        for (double speed : cd) sectors.push_back(static_cast<std::uint32_t>(std::lround(speed * CdSectorsPerSecond)));
    else
        for (double speed : dvd)
            sectors.push_back(static_cast<std::uint32_t>(std::lround(speed * DvdSectorsPerSecond)));
    return sectors;
}

} // namespace

DiscSpeeds::DiscSpeeds(DiscFamily family) : DiscSpeeds(family, {}) {}

DiscSpeeds::DiscSpeeds(DiscFamily family, std::vector<std::uint32_t> sectorsPerSecond) {
    std::erase_if(sectorsPerSecond, [&](std::uint32_t sectors) { return Shown(family, sectors) <= 0; });
    if (sectorsPerSecond.empty()) sectorsPerSecond = Customary(family);
    std::sort(sectorsPerSecond.begin(), sectorsPerSecond.end());
    for (std::uint32_t sectors : sectorsPerSecond) {
        const double shown = Shown(family, sectors);
        if (entries_.empty() || entries_.back().speed != shown) entries_.push_back({shown, sectors});
    }
}

const DiscSpeeds::Entry& DiscSpeeds::NearestEntry(double speed) const {
    return *std::min_element(entries_.begin(), entries_.end(), [speed](const Entry& left, const Entry& right) {
        return std::abs(left.speed - speed) < std::abs(right.speed - speed);
    });
}

double DiscSpeeds::Nearest(double speed) const {
    return NearestEntry(speed).speed;
}

double DiscSpeeds::Fastest() const {
    return entries_.back().speed;
}

std::int32_t DiscSpeeds::SectorsPerSecond(double speed) const {
    return static_cast<std::int32_t>(NearestEntry(speed).sectorsPerSecond);
}
