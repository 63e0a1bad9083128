#include "core/TextDecoding.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(TextDecoding, WithoutAMarkBytesAreAnsi) {
    EXPECT_EQ(DecodeText("\xC9t\xE9"), L"Été");
    EXPECT_EQ(DecodeText("\xC3\x89"), L"Ã‰");
    EXPECT_EQ(DecodeText(""), L"");
}

TEST(TextDecoding, MarkSaysUtf8) {
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xC3\x89t\xC3\xA9 \xC5\x81 \xE2\x82\xAC"), L"Été Ł €");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xF0\x9F\x98\x80"), L"\U0001F600");
}

TEST(TextDecoding, MarkSaysUtf16OfEitherOrder) {
    EXPECT_EQ(DecodeText("\xFF\xFE\xC9\0t\0\xE9\0"s), L"Été");
    EXPECT_EQ(DecodeText("\xFE\xFF\0\xC9\0t\0\xE9"s), L"Été");
    EXPECT_EQ(DecodeText("\xFF\xFE\x3D\xD8\x00\xDE"s), L"\U0001F600");
}

TEST(TextDecoding, DamageGivesReplacementsAndKeepsTheRest) {
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF"
                         "a\xFF"
                         "b\xC3"
                         "c\xE2\x82"),
              L"a\uFFFDb\uFFFDc\uFFFD");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xC0\x80\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(DecodeText("\xFF\xFE\x3D\xD8x\0"s), L"\uFFFDx");
    EXPECT_EQ(DecodeText("\xFF\xFEx\0y"s), L"x") << "half a character at the end";
}

TEST(TextDecoding, EveryLengthOfUtf8BeginsAndEndsWhereItsOwnDoes) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_EQ(DecodeText(mark + "\x7F\xC2\x80\xDF\xBF"), L"\x7F\x80\u07FF"s);
    EXPECT_EQ(DecodeText(mark + "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"), L"\u0800\uD7FF\uE000\uFFFF"s);
    EXPECT_EQ(DecodeText(mark + "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), L"\U00010000\U0010FFFF"s);
    for (const char* damaged :
         {"\x80", "\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80"})
        EXPECT_EQ(DecodeText(mark + damaged), L"\uFFFD");
    for (const char* leads : {"\xC0\x80", "\xC1\xBF"}) EXPECT_EQ(DecodeText(mark + leads), L"\uFFFD\uFFFD");
    EXPECT_EQ(DecodeText(mark + "\xF5\x80\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD") << "no character begins so";
}

TEST(TextDecoding, PairsOfUtf16AreAHighAndALowHalfWithinTheText) {
    EXPECT_EQ(DecodeText("\xFE\xFF\xD8\x00\xDC\x00\xDB\xFF\xDF\xFF"s), L"\U00010000\U0010FFFF");
    EXPECT_EQ(DecodeText("\xFE\xFF\xD7\xFF\xE0\x00"s), L"\uD7FF\uE000");
    EXPECT_EQ(DecodeText("\xFE\xFF\xDC\x00\xDC\x00\xDF\xFF\xD8\x00\xE0\x00"s), L"\uFFFD\uFFFD\uFFFD\uFFFD\uE000");
    const std::string longer = "\xFE\xFF\x00x\xD8\x3D\xDE\x00"s;
    EXPECT_EQ(DecodeText(std::string_view(longer).substr(0, 6)), L"x\uFFFD") << "the low half is not in the text";
}

} // namespace
