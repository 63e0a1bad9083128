// What every implementation of Environment does; run against the stand-in, and under Windows against the real one too.
#include "support/FakeEnvironment.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsEnvironment.h"
#endif

namespace {

struct FakeEnvironmentBench {
    FakeEnvironmentBench() { side.Set(L"Temp", L"C:\\Temp"); }
    FakeEnvironment side;
};

#ifdef _WIN32
struct WindowsEnvironmentBench {
    WindowsEnvironment side;
};
using Benches = testing::Types<FakeEnvironmentBench, WindowsEnvironmentBench>;
#else
using Benches = testing::Types<FakeEnvironmentBench>;
#endif

template<typename Bench>
class EnvironmentContract : public testing::Test {
  protected:
    Bench bench_;
    const Environment& environment_ = bench_.side;
};

TYPED_TEST_SUITE(EnvironmentContract, Benches);

TYPED_TEST(EnvironmentContract, NamesIgnoreCase) {
    ASSERT_TRUE(this->environment_.Variable(L"Temp").has_value());
    EXPECT_EQ(this->environment_.Variable(L"TEMP"), this->environment_.Variable(L"temp"));
    EXPECT_FALSE(this->environment_.Variable(L"Temp")->empty());
}

TYPED_TEST(EnvironmentContract, AVariableThatIsNotSetIsNothing) {
    EXPECT_FALSE(this->environment_.Variable(L"NoSuchVariableAnywhere").has_value());
}

TYPED_TEST(EnvironmentContract, TheProgramsFolderHasNoTrailingBackslash) {
    EXPECT_FALSE(this->environment_.ProgramFolder().empty());
    EXPECT_FALSE(this->environment_.ProgramFolder().ends_with(L'\\'));
}

} // namespace
