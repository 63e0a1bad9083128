#include "selection/PathRules.h"

#include <gtest/gtest.h>

namespace {

TEST(PathRules, RootOfADiskIsALetterAColonAndABackslash) {
    EXPECT_TRUE(IsDiskRoot(L"C:\\"));
    for (const wchar_t* path : {L"", L":\\", L"C:", L"C:/", L"abc", L"C:\\a", L"CC:\\"})
        EXPECT_FALSE(IsDiskRoot(path)) << path;
}

TEST(PathRules, AllBackslashesAtTheEndGoButThoseOfARoot) {
    EXPECT_EQ(WithoutTrailingBackslash(L"C:\\Data\\\\"), L"C:\\Data");
    EXPECT_EQ(WithoutTrailingBackslash(L"C:\\\\"), L"C:\\");
    EXPECT_EQ(WithoutTrailingBackslash(L"\\"), L"");
    EXPECT_EQ(WithoutTrailingBackslash(L"C:\\Data"), L"C:\\Data");
}

TEST(PathRules, FolderOfAPathEndsWithItsBackslash) {
    EXPECT_EQ(FolderPart(L"C:\\Data\\a.txt"), L"C:\\Data\\");
    EXPECT_EQ(FolderPart(L"\\a"), L"\\");
    EXPECT_EQ(FolderPart(L"a.txt"), L"");
}

TEST(PathRules, OneBackslashStandsBetweenAFolderAndAName) {
    EXPECT_EQ(InFolder(L"C:\\", L"a"), L"C:\\a");
    EXPECT_EQ(InFolder(L"C:\\Data", L"a"), L"C:\\Data\\a");
}

TEST(PathRules, PartIsTakenOutWhereverItStands) {
    EXPECT_EQ(Without(L"*a**b*", L"*"), L"ab");
    EXPECT_EQ(Without(L"C:\\Data\\*.*", AllFiles), L"C:\\Data");
    EXPECT_EQ(Without(L"aabb", L"ab"), L"ab") << "what comes together afterwards stays";
}

} // namespace
