#include "check/TargetNames.h"

#include <gtest/gtest.h>

TEST(TargetNames, PlainNamesStay) {
    EXPECT_EQ(SafePath(L"Clients/Bélanger, Éric.doc"), L"Clients\\Bélanger, Éric.doc");
    EXPECT_EQ(SafePath(L".caché/a"), L".caché\\a");
}

TEST(TargetNames, PathsThatClimbAreRefused) {
    for (const wchar_t* path : {L"../a", L"a/../../b", L"..\\a", L"a/..", L".../a", L".. /a"})
        EXPECT_FALSE(SafePath(path)) << path;
}

TEST(TargetNames, RootsDrivesAndSharesStayBelow) {
    EXPECT_EQ(SafePath(L"/etc/a"), L"etc\\a");
    EXPECT_EQ(SafePath(L"C:\\Windows\\a"), L"Windows\\a");
    EXPECT_EQ(SafePath(L"\\\\server\\share\\a"), L"server\\share\\a");
}

TEST(TargetNames, StreamsAndDevicesLoseTheirMeaning) {
    EXPECT_EQ(SafePath(L"a.txt:hidden"), L"a.txt_hidden");
    EXPECT_EQ(SafePath(L"NUL"), L"_NUL");
    EXPECT_EQ(SafePath(L"con.txt"), L"_con.txt");
    EXPECT_EQ(SafePath(L"aux .b"), L"_aux .b");
    EXPECT_EQ(SafePath(L"COM1/LPT\u00B9"), L"_COM1\\_LPT\u00B9");
    EXPECT_EQ(SafePath(L"COMMENT"), L"COMMENT");
}

TEST(TargetNames, EndsThatWindowsDropsAreKeptApart) {
    EXPECT_EQ(SafePath(L"a."), L"a_");
    EXPECT_EQ(SafePath(L"a "), L"a_");
    EXPECT_EQ(SafePath(std::wstring(L"a\x01") + L"b"), L"a_b");
}

TEST(TargetNames, AFolderGoesUnderItsDriveLetter) {
    EXPECT_EQ(PlaceOfFolder(L"c:\\Users\\agent\\"), L"C\\Users\\agent");
    EXPECT_EQ(PlaceOfFolder(L"D:\\"), L"D");
    EXPECT_EQ(PlaceOfFolder(L"\\\\server\\share\\a"), L"server\\share\\a");
    EXPECT_FALSE(PlaceOfFolder(L"C:\\a\\..\\..\\b"));
    EXPECT_FALSE(PlaceOfFolder(L"a\\b"));
}

TEST(TargetNames, ANumberComesBeforeTheExtension) {
    EXPECT_EQ(Numbered(L"C:\\a.b\\c.txt", 2), L"C:\\a.b\\c (2).txt");
    EXPECT_EQ(Numbered(L"C:\\a.b\\c", 2), L"C:\\a.b\\c (2)");
    EXPECT_EQ(Numbered(L"C:\\.profile", 3), L"C:\\.profile (3)");
}

TEST(TargetNames, ADriveIsOneOfTheTwentySixLetters) {
    for (const wchar_t* letter : {L"A", L"Z"})
        EXPECT_EQ(PlaceOfFolder(std::wstring(letter) + L":\\a"), letter + std::wstring(L"\\a"));
    EXPECT_EQ(PlaceOfFolder(L"a:\\a"), L"A\\a");
    EXPECT_EQ(PlaceOfFolder(L"z:\\a"), L"Z\\a");
    for (const wchar_t* path : {L"@:\\a", L"[:\\a", L"`:\\a", L"{:\\a", L"1:\\a", L":\\a", L"C", L""})
        EXPECT_FALSE(PlaceOfFolder(path)) << path;
}

TEST(TargetNames, ANameOf240LettersIsTheLongest) {
    EXPECT_EQ(SafeName(std::wstring(240, L'a')), std::wstring(240, L'a'));
    EXPECT_EQ(SafeName(std::wstring(241, L'a')), std::wstring(240, L'a'));
}
