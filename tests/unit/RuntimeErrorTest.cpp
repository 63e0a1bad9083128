#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace {

struct Description {
    ErrorNumber number;
    const wchar_t* text;
};

// Users read them out to the support desk.
constexpr Description Descriptions[] = {
    {ErrorNumber::InvalidCall, L"Invalid procedure call or argument"},
    {ErrorNumber::Overflow, L"Overflow"},
    {ErrorNumber::OutOfMemory, L"Out of memory"},
    {ErrorNumber::SubscriptOutOfRange, L"Subscript out of range"},
    {ErrorNumber::TypeMismatch, L"Type mismatch"},
    {ErrorNumber::BadFileName, L"Bad file name or number"},
    {ErrorNumber::FileNotFound, L"File not found"},
    {ErrorNumber::DeviceIoError, L"Device I/O error"},
    {ErrorNumber::DiskFull, L"Disk full"},
    {ErrorNumber::InputPastEndOfFile, L"Input past end of file"},
    {ErrorNumber::PermissionDenied, L"Permission denied"},
    {ErrorNumber::DiskNotReady, L"Disk not ready"},
    {ErrorNumber::PathFileAccessError, L"Path/File access error"},
    {ErrorNumber::PathNotFound, L"Path not found"},
    {ErrorNumber::ObjectNotSet, L"Object variable or With block variable not set"},
    {ErrorNumber::CannotCreateObject, L"ActiveX component can't create object"},
    {ErrorNumber::KeyAlreadyPresent, L"This key is already associated with an element of this collection"},
};

TEST(RuntimeErrors, EachNumberHasItsDescription) {
    for (const auto& [number, text] : Descriptions) {
        EXPECT_EQ(DescriptionOf(static_cast<std::int32_t>(number)), text);
        EXPECT_EQ(RuntimeError(number).Description(), text);
    }
    EXPECT_EQ(DescriptionOf(12345), L"Application-defined or object-defined error");
}

TEST(RuntimeErrors, AnErrorSaysItsNumberWhereOnlyExceptionsAreKnown) {
    const RuntimeError error(53, L"gone");
    const std::exception& known = error;
    EXPECT_STREQ(known.what(), "run-time error 53");
    EXPECT_EQ(error.Number(), 53);
    EXPECT_EQ(error.Description(), L"gone");
}

} // namespace
