// What every side of the encodings does; the tests run with the native side and under Windows with the real one.
#include "platform/CodePages.h"

#include <gtest/gtest.h>

namespace {

TEST(CodePagesContract, TextBecomesUtf8AndComesBack) {
    EXPECT_EQ(ToUtf8(L""), "");
    EXPECT_EQ(ToUtf8(L"a\u00E9\u20AC"), "a\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(ToUtf8(L"\U0001F600"), "\xF0\x9F\x98\x80");
    for (const wchar_t* text : {L"", L"C:\\Été\\œuvre – 5 €.doc", L"Łódź\u65E5\U0001F600"})
        EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
}

TEST(CodePagesContract, WhatIsNoCharacterIsReplaced) {
    EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
    EXPECT_EQ(FromUtf8("a\xC3(b"), L"a\uFFFD(b");
    EXPECT_EQ(FromUtf8("\xFF"), L"\uFFFD");
    EXPECT_EQ(FromUtf8("a\xC3"), L"a\uFFFD");
}

TEST(CodePagesContract, TheConsolesPageKeepsAscii) {
    EXPECT_EQ(ToOem(L""), "");
    EXPECT_EQ(ToOem(L"C:\\a b\\#1.txt"), "C:\\a b\\#1.txt");
}

TEST(CodePagesContract, TheConsolesPageHasOneByteForEachLetter) {
    if (OemCodePage() != 850 && OemCodePage() != 437) GTEST_SKIP() << "the consoles' code page is " << OemCodePage();
    EXPECT_EQ(ToOem(L"Été"), "\x90t\x82");
    EXPECT_EQ(ToOem(L"\u65E5"), "?");
}

} // namespace
