#pragma once

#include "platform/Clock.h"

#include <functional>

class FakeClock : public Clock {
  public:
    LocalTime now = {2026, 3, 14, 15, 9, 26};
    double secondsSinceMidnight = 54566.0; ///< Sleep moves it on
    double speed = 1;                      ///< how many times its length a Sleep takes
    int sleeps = 0;
    std::function<void()> duringSleep;

    LocalTime Now() const override { return now; }
    double SecondsSinceMidnight() const override { return secondsSinceMidnight; }
    void Sleep(std::uint32_t milliseconds) override {
        ++sleeps;
        secondsSinceMidnight += speed * milliseconds / 1000.0;
        if (duringSleep) duringSleep();
    }
};
