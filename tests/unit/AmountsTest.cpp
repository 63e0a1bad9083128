#include "core/Currency.h"
#include "core/NumberFormat.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::int64_t Units(double value) {
    return Currency::FromDouble(value).TenThousandths();
}

TEST(Currency, KeepsFourDecimals) {
    EXPECT_EQ(Units(1.05), 10500);
    EXPECT_EQ(Units(-1.05), -10500);
    EXPECT_EQ(Units(0.00004), 0);
    EXPECT_EQ(Units(0.00006), 1);
}

TEST(Currency, HalvesOfTheLastDecimalGoToTheEvenOne) {
    // Sums of powers of two, so that the half is exact.
    EXPECT_EQ(Units(0.03125), 312);
    EXPECT_EQ(Units(0.09375), 938);
    EXPECT_EQ(Units(-0.03125), -312);
}

TEST(Currency, LargestAmounts) {
    EXPECT_EQ(Units(562949953421312.0), 5629499534213120000);
    EXPECT_EQ(Units(-562949953421312.0), -5629499534213120000);
    EXPECT_THROW(Units(922337203685478.0), RuntimeError);
    EXPECT_THROW(Units(-1e300), RuntimeError);
    EXPECT_THROW(Units(std::numeric_limits<double>::quiet_NaN()), RuntimeError);
    EXPECT_THROW(Units(std::numeric_limits<double>::infinity()), RuntimeError);
}

TEST(Currency, OverflowIsError6) {
    try {
        Units(1e20);
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 6);
    }
}

TEST(Currency, SumThatOverflowsLeavesTheAmount) {
    Currency amount = Currency::FromTenThousandths(INT64_MAX);
    EXPECT_THROW(amount += Currency::FromTenThousandths(1), RuntimeError);
    EXPECT_EQ(amount.TenThousandths(), INT64_MAX);
    amount = Currency::FromTenThousandths(INT64_MIN);
    EXPECT_THROW(amount -= Currency::FromTenThousandths(1), RuntimeError);
    EXPECT_EQ(amount.TenThousandths(), INT64_MIN);
}

TEST(Currency, AddingAndTakingAwayIsExact) {
    Currency amount;
    for (int step = 0; step < 1000; ++step) amount += Currency::FromDouble(0.1);
    for (int step = 0; step < 1000; ++step) amount -= Currency::FromDouble(0.1);
    EXPECT_EQ(amount, Currency());
}

std::wstring Figure(double value, const std::wstring& separator = L".") {
    return FormatNumber(value, MegabytePicture, separator);
}

TEST(NumberFormat, BlanksOfThePictureAreOutputWhereTheyStand) {
    EXPECT_EQ(Figure(0), L"  0.000");
    EXPECT_EQ(Figure(7.25), L"  7.250");
    EXPECT_EQ(Figure(123), L"  123.000");
    EXPECT_EQ(Figure(1234), L" 1 234.000");
    EXPECT_EQ(Figure(12345), L" 12 345.000");
    EXPECT_EQ(Figure(1234567), L"1 234 567.000");
}

TEST(NumberFormat, DigitsBeyondThePictureStandWhereItsFirstDigitStands) {
    EXPECT_EQ(Figure(12345678.5), L"12 345 678.500");
}

TEST(NumberFormat, DecimalSeparatorIsTheUsers) {
    EXPECT_EQ(Figure(1.5, L","), L"  1,500");
    EXPECT_EQ(Figure(1.5, L"::"), L"  1::500");
}

TEST(NumberFormat, HalvesRoundAwayFromZero) {
    EXPECT_EQ(Figure(0.0005), L"  0.001");
    EXPECT_EQ(Figure(0.0015), L"  0.002");
    EXPECT_EQ(Figure(1.0005), L"  1.001");
    EXPECT_EQ(Figure(2.5625), L"  2.563");
    EXPECT_EQ(FormatNumber(0.5, L"0", L"."), L"1");
    EXPECT_EQ(FormatNumber(2.5, L"0", L"."), L"3");
    EXPECT_EQ(FormatNumber(2.4999999, L"0", L"."), L"2");
}

TEST(NumberFormat, RoundingCarriesIntoTheWholePart) {
    EXPECT_EQ(Figure(999.9996), L" 1 000.000");
    EXPECT_EQ(FormatNumber(9.5, L"#", L"."), L"10");
}

TEST(NumberFormat, NegativeAmountsCarryTheSignFirst) {
    EXPECT_EQ(Figure(-1.5), L"-  1.500");
    EXPECT_EQ(Figure(-1234), L"- 1 234.000");
}

TEST(NumberFormat, NegativeAmountThatRoundsToZeroHasNoSign) {
    EXPECT_EQ(Figure(-0.0001), L"  0.000");
    EXPECT_EQ(Figure(-0.0), L"  0.000");
}

TEST(NumberFormat, OptionalDigitsOfZeroAreLeftOut) {
    EXPECT_EQ(FormatNumber(0, L"#.0", L"."), L".0");
    EXPECT_EQ(FormatNumber(0, L"00.0", L"."), L"00.0");
}

TEST(NumberFormat, LargeAmounts) {
    EXPECT_EQ(FormatNumber(1e15, L"0", L"."), L"1000000000000000");
    EXPECT_EQ(Figure(8796093022208.0), L"8796093 022 208.000");
}

TEST(Megabytes, AreUnitsOf1048576Bytes) {
    EXPECT_EQ(Megabytes(1048576.0), 1.0);
    EXPECT_EQ(Megabytes(734003200.0), 700.0);
}

} // namespace
