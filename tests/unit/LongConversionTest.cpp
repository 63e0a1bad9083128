#include "core/LongConversion.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

/// The number of the failure; nothing when the text converts.
std::optional<std::int32_t> FailureOf(const std::wstring& text, const std::wstring& separator = L".") {
    try {
        ToLong(text, separator);
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return std::nullopt;
}

TEST(LongConversion, PlainNumbers) {
    EXPECT_EQ(ToLong(L"20001", L"."), 20001);
    EXPECT_EQ(ToLong(L"0", L"."), 0);
    EXPECT_EQ(ToLong(L"00020001", L"."), 20001);
}

TEST(LongConversion, BlanksAroundDoNotCount) {
    EXPECT_EQ(ToLong(L"  20001\t", L"."), 20001);
    EXPECT_EQ(ToLong(L" - 7 ", L"."), -7);
}

TEST(LongConversion, SignStandsBeforeOrAfter) {
    EXPECT_EQ(ToLong(L"+12", L"."), 12);
    EXPECT_EQ(ToLong(L"-12", L"."), -12);
    EXPECT_EQ(ToLong(L"12-", L"."), -12);
    EXPECT_EQ(FailureOf(L"--12"), 13);
    EXPECT_EQ(FailureOf(L"-12-"), 13);
}

TEST(LongConversion, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(ToLong(L"2.5", L"."), 2);
    EXPECT_EQ(ToLong(L"3.5", L"."), 4);
    EXPECT_EQ(ToLong(L"-2.5", L"."), -2);
    EXPECT_EQ(ToLong(L"2.51", L"."), 3);
    EXPECT_EQ(ToLong(L".5", L"."), 0);
    EXPECT_EQ(ToLong(L"7.", L"."), 7);
}

TEST(LongConversion, DecimalSeparatorIsTheUsers) {
    EXPECT_EQ(ToLong(L"20001,4", L","), 20001);
    EXPECT_EQ(FailureOf(L"20001.4", L","), 13);
}

TEST(LongConversion, DigitsMayBeGrouped) {
    EXPECT_EQ(ToLong(L"20,001", L"."), 20001);
    EXPECT_EQ(ToLong(L"20\u00A0001", L","), 20001);
    EXPECT_EQ(FailureOf(L",5"), 13);
}

TEST(LongConversion, HexadecimalDigitsGoFromZeroToFInBothCases) {
    EXPECT_EQ(ToLong(L"&H0a", L"."), 10);
    EXPECT_EQ(ToLong(L"&haF9", L"."), 0xAF9);
    EXPECT_EQ(ToLong(L"&HAf", L"."), 0xAF);
    for (const wchar_t* text : {L"&Hg", L"&HG", L"&H`", L"&H@", L"&H:", L"&H/"}) EXPECT_EQ(FailureOf(text), 13);
}

TEST(LongConversion, ExponentScales) {
    EXPECT_EQ(ToLong(L"2.0001E4", L"."), 20001);
    EXPECT_EQ(ToLong(L"1e-2", L"."), 0);
    EXPECT_EQ(FailureOf(L"1e"), 13);
    EXPECT_EQ(FailureOf(L"1e+"), 13);
    EXPECT_EQ(FailureOf(L"1e99"), 6);
    EXPECT_EQ(FailureOf(L"1e99999999999999999999"), 6);
}

TEST(LongConversion, HexadecimalAndOctalPrefixes) {
    EXPECT_EQ(ToLong(L"&H4E21", L"."), 20001);
    EXPECT_EQ(ToLong(L"&o47041", L"."), 20001);
    EXPECT_EQ(ToLong(L"&HFFFFFFFF", L"."), -1);
    EXPECT_EQ(FailureOf(L"&H1FFFFFFFF"), 6);
    EXPECT_EQ(FailureOf(L"&HG"), 13);
    EXPECT_EQ(FailureOf(L"&O8"), 13);
    EXPECT_EQ(FailureOf(L"&H"), 13);
}

TEST(LongConversion, BeyondThirtyTwoBitsOverflows) {
    EXPECT_EQ(ToLong(L"2147483647", L"."), 2147483647);
    EXPECT_EQ(ToLong(L"-2147483648", L"."), INT32_MIN);
    EXPECT_EQ(FailureOf(L"2147483648"), 6);
    EXPECT_EQ(FailureOf(L"-2147483649"), 6);
    EXPECT_EQ(ToLong(L"2147483647.4", L"."), 2147483647);
    EXPECT_EQ(FailureOf(L"2147483647.5"), 6);
    EXPECT_EQ(FailureOf(std::wstring(254, L'9')), 6);
}

TEST(LongConversion, WhatIsNoNumberIsATypeMismatch) {
    for (const wchar_t* text :
         {L"", L" ", L"français", L"20001x", L"2 0 x", L"-", L".", L"0x10", L"1..2", L"1e2e3", L"1h5", L"xO7", L"&"})
        EXPECT_EQ(FailureOf(text), 13) << std::string(text, text + std::char_traits<wchar_t>::length(text));
}

} // namespace
