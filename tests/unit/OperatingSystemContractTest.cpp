// What every implementation of OperatingSystem does; run against the stand-in, and under Windows against the real one.
#include "support/FakeOperatingSystem.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsOperatingSystem.h"
#endif

namespace {

#ifdef _WIN32
using Sides = testing::Types<FakeOperatingSystem, WindowsOperatingSystem>;
#else
using Sides = testing::Types<FakeOperatingSystem>;
#endif

template<typename Side>
class OperatingSystemContract : public testing::Test {};

TYPED_TEST_SUITE(OperatingSystemContract, Sides);

TYPED_TEST(OperatingSystemContract, VersionIsOfTheNtFamily) {
    const TypeParam side;
    const OperatingSystem& system = side;
    EXPECT_EQ(system.Version().platform, 2u);
    EXPECT_GE(system.Version().major, 5u);
}

} // namespace
