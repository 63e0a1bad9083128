// What every implementation of Locale does; run against the stand-in, and under Windows against the real one too.
#include "support/FakeLocale.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsLocale.h"
#endif

namespace {

#ifdef _WIN32
using Sides = testing::Types<FakeLocale, WindowsLocale>;
#else
using Sides = testing::Types<FakeLocale>;
#endif

template<typename Side>
class LocaleContract : public testing::Test {
  protected:
    const Side side_{};
    const Locale& locale_ = side_;
};

TYPED_TEST_SUITE(LocaleContract, Sides);

TYPED_TEST(LocaleContract, TextsAreThere) {
    EXPECT_FALSE(this->locale_.LanguageName().empty());
    EXPECT_FALSE(this->locale_.DecimalSeparator().empty());
}

TYPED_TEST(LocaleContract, EachMonthHasItsName) {
    for (int month = 1; month <= 12; ++month) EXPECT_FALSE(this->locale_.AbbreviatedMonth(month).empty());
    EXPECT_NE(this->locale_.AbbreviatedMonth(1), this->locale_.AbbreviatedMonth(12));
}

} // namespace
