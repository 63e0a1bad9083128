// What every implementation of UserAccount does; run against the stand-in, and under Windows against the real one too.
#include "support/FakeUserAccount.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsUserAccount.h"
#endif

namespace {

#ifdef _WIN32
using Sides = testing::Types<FakeUserAccount, WindowsUserAccount>;
#else
using Sides = testing::Types<FakeUserAccount>;
#endif

template<typename Side>
class UserAccountContract : public testing::Test {
  protected:
    const Side side_{};
    const UserAccount& account_ = side_;
};

TYPED_TEST_SUITE(UserAccountContract, Sides);

TYPED_TEST(UserAccountContract, HasAName) {
    EXPECT_FALSE(this->account_.Name().empty());
}

TYPED_TEST(UserAccountContract, TheProfileFolderHasNoTrailingBackslash) {
    EXPECT_FALSE(this->account_.ProfileFolder().empty());
    EXPECT_FALSE(this->account_.ProfileFolder().ends_with(L'\\'));
}

} // namespace
