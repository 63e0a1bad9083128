#include "shell/LanguageChoice.h"

#include "core/LanguageValues.h"
#include "platform/RuntimeError.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int32_t French = 0;
constexpr std::int32_t English = 10000;

class LanguageChoice : public testing::Test {
  protected:
    void SetSetting(const std::wstring& value) {
        machine.settings.Set(L"C:\\Valcoreaux\\Accueil\\accueil.ini", L"ACCUEIL-DEFAULTS", L"Lang", value);
    }
    std::int32_t Choose() {
        ChooseLanguage(machine.app);
        return machine.app.language->lngLangue;
    }
    std::int32_t FailureOfChoice() {
        try {
            ChooseLanguage(machine.app);
        } catch (const RuntimeError& error) {
            return error.Number();
        }
        return 0;
    }

    FakeMachine machine;
};

TEST_F(LanguageChoice, WithoutSettingsFrenchWindowsIsFrench) {
    EXPECT_EQ(Choose(), French);
    EXPECT_TRUE(machine.app.language->blnLangueWindows);
}

TEST_F(LanguageChoice, WithoutSettingsEnglishWindowsIsEnglish) {
    machine.locale.languageName = L"English";
    EXPECT_EQ(Choose(), English);
    EXPECT_TRUE(machine.app.language->blnLangueWindows);
}

TEST_F(LanguageChoice, WindowsLanguageIsComparedWithItsCase) {
    machine.locale.languageName = L"Français";
    EXPECT_EQ(Choose(), English);
}

TEST_F(LanguageChoice, FailedLocaleCallsGiveEnglish) {
    machine.locale.languageName.clear();
    EXPECT_EQ(Choose(), English);
}

TEST_F(LanguageChoice, Code20001IsFrenchOnEnglishWindows) {
    machine.locale.languageName = L"English";
    SetSetting(L"20001");
    EXPECT_EQ(Choose(), French);
    EXPECT_FALSE(machine.app.language->blnLangueWindows);
}

TEST_F(LanguageChoice, AnyOtherNumberIsEnglishOnFrenchWindows) {
    for (const wchar_t* value : {L"0", L"10000", L"-1", L"20002", L"1.5e3"}) {
        FakeMachine other;
        other.locale.decimalSeparator = L".";
        other.settings.Set(L"C:\\Valcoreaux\\Accueil\\accueil.ini", L"ACCUEIL-DEFAULTS", L"Lang", value);
        ChooseLanguage(other.app);
        EXPECT_EQ(other.app.language->lngLangue, English);
    }
}

TEST_F(LanguageChoice, LanguageNameInsteadOfCodeIsATypeMismatchAndFrench) {
    SetSetting(L"français");
    EXPECT_EQ(FailureOfChoice(), 13);
    EXPECT_EQ(machine.app.language->lngLangue, French);
    EXPECT_FALSE(machine.app.language->blnLangueWindows);
}

TEST_F(LanguageChoice, CodeBeyondThirtyTwoBitsOverflowsAndStaysFrench) {
    SetSetting(L"99999999999");
    EXPECT_EQ(FailureOfChoice(), 6);
    EXPECT_EQ(machine.app.language->lngLangue, French);
}

TEST_F(LanguageChoice, ValueOf400CharactersIsCutTo254) {
    // The code ends within the 254 characters; what is cut would have spoilt it.
    SetSetting(std::wstring(249, L'0') + L"20001" + std::wstring(146, L'x'));
    machine.locale.languageName = L"English";
    EXPECT_EQ(Choose(), French);
}

TEST_F(LanguageChoice, ProgramFolderAtADriveRootReadsTheSiblingFolder) {
    FakeMachine atRoot(nullptr, L"D:\\Backup");
    atRoot.settings.Set(L"D:\\Accueil\\accueil.ini", L"ACCUEIL-DEFAULTS", L"Lang", L"10000");
    ChooseLanguage(atRoot.app);
    EXPECT_EQ(atRoot.app.language->lngLangue, English);
}

TEST(IniValue, MissingKeyIsEmpty) {
    FakeMachine machine;
    EXPECT_EQ(LireINI(machine.app, L"C:\\a.ini", L"S", L"K"), L"");
}

} // namespace
