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

} // namespace
