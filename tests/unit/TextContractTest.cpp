// One definition of the conversions is linked into each build; both are held to this.
#include "platform/Text.h"

#include <gtest/gtest.h>

namespace {

TEST(TextContract, UpperCaseMapsAccentedLetters) {
    EXPECT_EQ(UpperCase(L"abc xyz 09 àâäçéèêëîïôöùûüñ œ ÿ"), L"ABC XYZ 09 ÀÂÄÇÉÈÊËÎÏÔÖÙÛÜÑ Œ Ÿ");
    EXPECT_EQ(UpperCase(L"żółć ğ αω жя"), L"ŻÓŁĆ Ğ ΑΩ ЖЯ");
}

TEST(TextContract, UpperCaseKeepsWhatHasNoCase) {
    EXPECT_EQ(UpperCase(L"C:\\*.* ÷ × ß ¿ \u2019 \u65E5"), L"C:\\*.* ÷ × ß ¿ \u2019 \u65E5");
    EXPECT_EQ(UpperCase(L""), L"");
}

TEST(TextContract, UpperCaseKeepsTheLength) {
    EXPECT_EQ(UpperCase(std::wstring(L"a\0b", 3)).size(), 3u);
}

TEST(TextContract, AnsiTextsSurviveTheRoundTrip) {
    const std::wstring text = L"Été à Zürich – “ça” s\u2019est 5 €, œuvre ± nº";
    EXPECT_EQ(FromAnsi(ToAnsi(text)), text);
    EXPECT_EQ(ToAnsi(L"é€\u2019"), "\xE9\x80\x92");
}

TEST(TextContract, CharactersOutsideTheCodePageBecomeOneOther) {
    EXPECT_EQ(ToAnsi(L"a\u65E5b"), "a?b");
    EXPECT_EQ(ToAnsi(L"Łódź \uFF0C\uFF3C e\u0301 \u2011"), "?\xF3"
                                                           "d? ?? e? ?");
}

TEST(TextContract, EveryByteGivesACharacterAndComesBack) {
    for (int code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        const std::wstring text = FromAnsi(byte);
        ASSERT_EQ(text.size(), 1u) << code;
        EXPECT_EQ(ToAnsi(text), byte) << code;
    }
}

TEST(TextContract, NothingGivesNothing) {
    EXPECT_EQ(ToAnsi(L""), "");
    EXPECT_EQ(FromAnsi(""), L"");
}

} // namespace
