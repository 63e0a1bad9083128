#include "discutil/EraseWatchdog.h"

#include "platform/Clock.h"

#include <initializer_list>

namespace {

constexpr int StallingPercent = 99;
constexpr std::int64_t PatienceUnits = 10;

} // namespace

bool EraseWatchdog::IsStalled(int percent, const LocalTime& now) {
    const std::int64_t stamp = Stamp(now);
    const bool isStalled = percent == StallingPercent && percent == lastPercent_ && stamp - lastStamp_ >= PatienceUnits;
    if (percent != lastPercent_) {
        lastPercent_ = percent;
        lastStamp_ = stamp;
    }
    return isStalled;
}

std::int64_t EraseWatchdog::Stamp(const LocalTime& time) {
    std::int64_t stamp = time.year;
    for (const int part : {time.month, time.day, time.hour, time.minute, time.second}) stamp = stamp * 100 + part;
    return stamp;
}
