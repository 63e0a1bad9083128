#include "core/LongConversion.h"

#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <oleauto.h>

#include <initializer_list>
#include <random>
#include <string>

namespace {

/// What a conversion comes to: a number, or the number of the failure.
std::string OursOf(const std::wstring& text, const std::wstring& separator) {
    try {
        return std::to_string(ToLong(text, separator));
    } catch (const RuntimeError& error) {
        return "error " + std::to_string(error.Number());
    }
}

std::string SystemsOf(std::wstring text, LCID locale) {
    LONG value = 0;
    switch (VarI4FromStr(text.data(), locale, LOCALE_NOUSEROVERRIDE, &value)) {
    case S_OK:
        return std::to_string(value);
    case DISP_E_OVERFLOW:
        return "error 6";
    case DISP_E_TYPEMISMATCH:
        return "error 13";
    default:
        return "another error";
    }
}

void Compare(const std::wstring& text) {
    EXPECT_EQ(OursOf(text, L"."), SystemsOf(text, 0x0409)) << "English: \"" << ToAnsi(text) << '"';
    EXPECT_EQ(OursOf(text, L","), SystemsOf(text, 0x040C)) << "French: \"" << ToAnsi(text) << '"';
}

TEST(LongConversionAgainstTheSystem, NumbersAsPeopleWriteThem) {
    for (const wchar_t* text :
         {L"20001",      L" 20001 ",     L"+20001",      L"-20001",       L"20001-", L"2.0001E4",
          L"2,0001E4",   L"20001.5",     L"20002,5",     L"20,001",       L"0",      L"",
          L" ",          L"français",    L"20001x",      L"x20001",       L"1e10",   L"2147483647",
          L"2147483648", L"-2147483648", L"-2147483649", L"2147483647.5", L".5",     L"5.",
          L"1.5",        L"2.5",         L"-2.5",        L"0.5",          L"1e",     L"1e+",
          L"--1",        L"1 2",         L"&H10",        L"&H4E21",       L"&O17",   L"12345678901234567890",
          L"1e-3"})
        Compare(text);
}

TEST(LongConversionAgainstTheSystem, NumbersMadeAtRandomWithPartsMissing) {
    std::mt19937 random(20001);
    const auto oneOf = [&](std::initializer_list<const wchar_t*> parts) {
        return std::wstring(parts.begin()[random() % parts.size()]);
    };
    for (int round = 0; round < 20000; ++round) {
        const std::wstring start = oneOf({L"", L" ", L"\t "}) + oneOf({L"", L"+", L"-"});
        const std::wstring whole = oneOf({L"", L"0", L"7", L"12", L"20001", L"2147483647", L"99999999999"});
        const std::wstring fraction = oneOf({L"", L"", L"0", L"5", L"50", L"51", L"4999"});
        const bool hasPoint = random() % 2 == 0;
        // Not every system rounds rightly what a negative exponent leaves below one.
        const std::wstring exponent = oneOf({L"", L"", L"e", L"e1", L"E+2", L"e+"});
        const std::wstring end = oneOf({L"", L"", L" ", L"x"});
        for (const wchar_t* point : {L".", L","}) {
            std::wstring text = start + whole;
            if (hasPoint) text += point;
            text += fraction + exponent;
            text += end;
            const bool isEnglish = *point == L'.';
            EXPECT_EQ(OursOf(text, point), SystemsOf(text, isEnglish ? 0x0409 : 0x040C)) << '"' << ToAnsi(text) << '"';
        }
        if (HasFailure()) return;
    }
}

} // namespace
