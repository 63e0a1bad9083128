// What every implementation of Clock does; run against the stand-in, and under Windows against the real one too.
#include "support/FakeClock.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsClock.h"
#endif

namespace {

#ifdef _WIN32
using Sides = testing::Types<FakeClock, WindowsClock>;
#else
using Sides = testing::Types<FakeClock>;
#endif

template<typename Side>
class ClockContract : public testing::Test {
  protected:
    Side side_;
    Clock& clock_ = side_;
};

TYPED_TEST_SUITE(ClockContract, Sides);

TYPED_TEST(ClockContract, NowIsADate) {
    const LocalTime now = this->clock_.Now();
    EXPECT_GE(now.year, 2024);
    EXPECT_GE(now.month, 1);
    EXPECT_LE(now.month, 12);
    EXPECT_GE(now.day, 1);
    EXPECT_LE(now.day, 31);
}

TYPED_TEST(ClockContract, SleepLetsTimePass) {
    const double before = this->clock_.SecondsSinceMidnight();
    this->clock_.Sleep(30);
    const double after = this->clock_.SecondsSinceMidnight();
    const bool isPastMidnight = after < before;
    EXPECT_TRUE(isPastMidnight || after - before >= 0.02) << before << " then " << after;
}

TYPED_TEST(ClockContract, SecondsSinceMidnightAreThoseOfOneDay) {
    EXPECT_GE(this->clock_.SecondsSinceMidnight(), 0);
    EXPECT_LT(this->clock_.SecondsSinceMidnight(), 24 * 60 * 60);
}

} // namespace
