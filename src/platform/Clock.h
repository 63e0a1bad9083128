#pragma once

#include <cstdint>

/// A moment of the user's wall clock.
struct LocalTime {
    int year = 0;
    int month = 0; ///< 1 to 12
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// The workstation's time.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual LocalTime Now() const = 0;
    /// Seconds since midnight, with fractions.
    virtual double SecondsSinceMidnight() const = 0;
    /// Gives up the processor for a moment.
    virtual void Sleep(std::uint32_t milliseconds) = 0;
};
