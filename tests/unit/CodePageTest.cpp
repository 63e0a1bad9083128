#include "core/CodePage.h"

#include <gtest/gtest.h>

namespace {

constexpr const wchar_t* Profile = L"C:\\Users\\agent";

TEST(CodePage, OrdinaryPathsSurvive) {
    for (const wchar_t* path : {L"C:\\Data\\a.txt", L"C:\\Été\\œuvre – 5 €.doc", L"D:\\", L""})
        EXPECT_TRUE(SurvivesControlFile(path, Profile)) << path;
}

TEST(CodePage, CharactersThatTheCodePageLacksDoNot) {
    for (const wchar_t* path : {L"C:\\Łukasz\\y.txt", L"C:\\Łódź\\umowa.doc", L"C:\\\u65E5.txt", L"C:\\\U0001F600.txt"})
        EXPECT_FALSE(SurvivesControlFile(path, Profile)) << path;
}

TEST(CodePage, CharactersThatOnlyResembleOnesOfTheCodePageDoNot) {
    EXPECT_FALSE(SurvivesControlFile(L"C:\\a\uFF0Cb.txt", Profile)) << "full-width comma";
    EXPECT_FALSE(SurvivesControlFile(L"C:\\a\uFF0Eb", Profile)) << "full-width point";
    EXPECT_FALSE(SurvivesControlFile(L"C:\\a\uFF3Cb", Profile)) << "full-width backslash";
    EXPECT_FALSE(SurvivesControlFile(L"C:\\Re\u0301sume\u0301.doc", Profile)) << "decomposed accents";
    EXPECT_FALSE(SurvivesControlFile(L"C:\\Devis\u202F: 5.doc", Profile)) << "narrow no-break space";
    EXPECT_FALSE(SurvivesControlFile(L"C:\\Saint\u2011Jean.doc", Profile)) << "non-breaking hyphen";
}

TEST(CodePage, ProfileFolderIsWrittenAsItsMarkerAndNeedsNotSurvive) {
    EXPECT_TRUE(SurvivesControlFile(L"C:\\Users\\Łukasz\\a.txt", L"C:\\Users\\Łukasz"));
    EXPECT_FALSE(SurvivesControlFile(L"C:\\Users\\Łukasz\\ł.txt", L"C:\\Users\\Łukasz"));
}

} // namespace
