#pragma once

#include <cstdint>

struct OsVersion {
    std::uint32_t platform = 0; ///< 2 is the NT family
    std::uint32_t major = 0;
    std::uint32_t minor = 0;

    /// Windows NT version 6 (Vista) or later.
    bool IsVistaOrLater() const { return platform == 2 && major >= 6; }
};

class OperatingSystem {
  public:
    virtual ~OperatingSystem() = default;
    /// The version that Windows gives a program of this age; all zero when it gives none.
    virtual OsVersion Version() const = 0;
};
