#ifdef _WIN32
#include "platform/windows/LastError.h"
#include "support/Failures.h"

#include <gtest/gtest.h>

namespace {

struct Translation {
    std::uint32_t systemError;
    ErrorNumber number;
};

// Windows' own codes, by number: what users quote must not move with a header.
constexpr Translation Translations[] = {
    {2, ErrorNumber::FileNotFound},
    {3, ErrorNumber::PathNotFound},
    {15, ErrorNumber::PathNotFound},
    {123, ErrorNumber::PathNotFound},
    {206, ErrorNumber::PathNotFound},
    {267, ErrorNumber::PathNotFound},
    {5, ErrorNumber::PermissionDenied},
    {19, ErrorNumber::PermissionDenied},
    {32, ErrorNumber::PermissionDenied},
    {33, ErrorNumber::PermissionDenied},
    {145, ErrorNumber::PermissionDenied},
    {39, ErrorNumber::DiskFull},
    {112, ErrorNumber::DiskFull},
    {21, ErrorNumber::DiskNotReady},
    {1112, ErrorNumber::DiskNotReady},
    {23, ErrorNumber::DeviceIoError},
    {31, ErrorNumber::DeviceIoError},
    {1117, ErrorNumber::DeviceIoError},
    {1167, ErrorNumber::DeviceIoError},
    {8, ErrorNumber::OutOfMemory},
    {183, ErrorNumber::PathFileAccessError},
    {9999, ErrorNumber::PathFileAccessError},
};

TEST(LastError, BecomesTheNumberThatUsersQuote) {
    for (const Translation& translation : Translations) {
        EXPECT_EQ(ErrorNumberOf(translation.systemError), translation.number) << translation.systemError;
    }
}

TEST(LastError, IsThrownWithItsDescription) {
    EXPECT_EQ(NumberThrownBy([] { ThrowSystemError(112); }), 61);
    try {
        ThrowSystemError(112);
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Description(), L"Disk full");
    }
}

} // namespace
#endif
