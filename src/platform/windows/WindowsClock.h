#pragma once

#include "platform/Clock.h"

class WindowsClock : public Clock {
  public:
    LocalTime Now() const override;
    double SecondsSinceMidnight() const override;
    void Sleep(std::uint32_t milliseconds) override;
};
