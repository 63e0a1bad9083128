#pragma once

#include "platform/Clock.h"

#include <cstdint>

/// Notices an erase that stays at 99 % for ever. The time is counted as the difference between two fourteen-digit
/// stamps (yyyymmddhhnnss), which counts seconds within a minute and jumps at its end.
class EraseWatchdog {
  public:
    /// Takes note of the progress seen now; true when the erase is to be taken as finished.
    bool IsStalled(int percent, const LocalTime& now);

    static std::int64_t Stamp(const LocalTime& time);

  private:
    int lastPercent_ = 0;
    std::int64_t lastStamp_ = 0;
};
