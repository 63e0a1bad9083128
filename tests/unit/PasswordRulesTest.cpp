#include "archive/PassingSecret.h"
#include "archive/modGestionMotPasse.h"

#include <gtest/gtest.h>

namespace {

using modGestionMotPasse::MotsPasseIdentiques;
using modGestionMotPasse::VerifierComplexiteMotPasse;

bool Passes(const std::wstring& password, const std::wstring& account = L"agent") {
    return VerifierComplexiteMotPasse(password, account);
}

TEST(PasswordPolicy, EightCharactersOfThreeCategoriesPass) {
    EXPECT_TRUE(Passes(L"Abcdefg1"));
}

TEST(PasswordPolicy, TwoCategoriesFail) {
    EXPECT_FALSE(Passes(L"abcdefg1"));
    EXPECT_FALSE(Passes(L"ABCDefgh"));
    EXPECT_FALSE(Passes(L"!!!!1111"));
}

TEST(PasswordPolicy, SevenCharactersFail) {
    EXPECT_FALSE(Passes(L"Abcdef1"));
    EXPECT_FALSE(Passes(L""));
}

TEST(PasswordPolicy, AllFourCategoriesPass) {
    EXPECT_TRUE(Passes(L"Abcdef1!"));
}

TEST(PasswordPolicy, BlankIsAllowedAndCountsForNoCategory) {
    EXPECT_TRUE(Passes(L"Ab1 defgh"));
    EXPECT_FALSE(Passes(L"ab1 defgh"));
}

TEST(PasswordPolicy, AccountNameInAnyCaseFails) {
    EXPECT_FALSE(Passes(L"MonAgent1!"));
    EXPECT_FALSE(Passes(L"ÉRICeric1!", L"éric"));
}

TEST(PasswordPolicy, OnlyTheWholeAccountNameIsSearchedFor) {
    EXPECT_TRUE(Passes(L"Age1nt!xyz"));
}

TEST(PasswordPolicy, UnknownAccountNameForbidsNothing) {
    EXPECT_TRUE(Passes(L"Abcdefg1", L""));
}

TEST(PasswordPolicy, AccentedLetterCountsForNoCategory) {
    EXPECT_FALSE(Passes(L"éééééé1a"));
    EXPECT_FALSE(Passes(L"ÀÉÈabcd1"));
    EXPECT_TRUE(Passes(L"éééé1aBc"));
}

TEST(PasswordPolicy, EveryPrintableSymbolCounts) {
    for (const wchar_t symbol : std::wstring(L"!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~"))
        EXPECT_TRUE(Passes(L"abcdef1" + std::wstring(1, symbol))) << static_cast<int>(symbol);
    for (const wchar_t other : std::wstring(L" \t\x7F\xA0"))
        EXPECT_FALSE(Passes(L"abcdef1" + std::wstring(1, other))) << static_cast<int>(other);
}

TEST(PasswordPolicy, EdgesOfTheCategoriesBelongToThem) {
    EXPECT_TRUE(Passes(L"AZazazaz09"));
    EXPECT_TRUE(Passes(L"AAAAAAa0"));
    EXPECT_TRUE(Passes(L"ZZZZZZz9"));
}

TEST(PasswordConfirmation, EmptyOneNeverMatches) {
    EXPECT_FALSE(MotsPasseIdentiques(L"", L""));
    EXPECT_FALSE(MotsPasseIdentiques(L"Abcdefg1", L""));
}

TEST(PasswordConfirmation, IsComparedCaseForCase) {
    EXPECT_TRUE(MotsPasseIdentiques(L"Abcdefg1", L"Abcdefg1"));
    EXPECT_FALSE(MotsPasseIdentiques(L"Abcdefg1", L"abcdefg1"));
}

TEST(Secret, IsOverwrittenBeforeItGoes) {
    std::wstring secret = L"Abcdefghijklmnopqrstuvwxyz1";
    const wchar_t* place = secret.data();
    Forget(secret);
    EXPECT_TRUE(secret.empty());
    for (int at = 0; at < 27; ++at) EXPECT_EQ(place[at], L'\0');
}

} // namespace
