#include "CaptionFit.h"
#include "Footprint.h"
#include "FormDriver.h"
#include "KeyboardReach.h"
#include "ScreenFit.h"
#include "archive/forms/frmMotPasse.h"
#include "core/ArchiveValues.h"
#include "core/LanguageValues.h"
#include "platform/MessageBoxes.h"
#include "resources/TextId.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "ui/MessagePump.h"

#include <algorithm>
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Ids = std::vector<int>;

constexpr const wchar_t* GoodPassword = L"Abcdefg1";

BOOL CALLBACK CloseForm(HWND window, LPARAM) {
    if (ui::Form::Of(window) != nullptr) SendMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

void CALLBACK CloseTheDialog(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), CloseForm, 0);
}

class PasswordDialog : public testing::Test, protected FormDriver {
  protected:
    void Open(PasswordMode mode) {
        dialog = std::make_unique<frmMotPasse>(machine.app, mode);
        dialog->Create();
        dialog->Show();
        ui::RunPendingMessages();
    }
    void OpenInEnglish(PasswordMode mode) {
        machine.app.language->lngLangue = 10000;
        Open(mode);
    }

    HWND Window() const override { return dialog->Handle(); }
    RECT Place(int id) const {
        RECT place{};
        GetWindowRect(At(id), &place);
        MapWindowPoints(nullptr, dialog->Handle(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    int TopTwips(int id) const { return ui::TwipsFromPixels(Place(id).top, dialog->Handle()); }
    RECT Inner() const {
        RECT inner{};
        GetClientRect(dialog->Handle(), &inner);
        return inner;
    }
    /// What the window's height must be for a height of the time when caption and frame took 375 twips.
    int HeightPixels(int twips) const {
        RECT outer{};
        GetWindowRect(dialog->Handle(), &outer);
        const int frame = (outer.bottom - outer.top) - Inner().bottom;
        return ui::PixelsFromTwips(twips, dialog->Handle()) +
               std::max(0, frame - ui::PixelsFromTwips(375, dialog->Handle()));
    }
    int OuterHeight() const {
        RECT outer{};
        GetWindowRect(dialog->Handle(), &outer);
        return outer.bottom - outer.top;
    }

    FormMessageLoop messages;
    FakeMachine machine{&messages};
    std::unique_ptr<frmMotPasse> dialog;
};

TEST_F(PasswordDialog, FrenchCaptions) {
    Open(PasswordMode::Creation);
    EXPECT_EQ(dialog->Title(), L"Mot de passe - copie de sécurité");
    EXPECT_EQ(Text(IDC_lblTitre), L"Entrer mot de passe");
    EXPECT_EQ(Text(IDC_lblConfirmation), L"Confirmer mot de passe");
    EXPECT_EQ(Text(IDC_lblNotaBene), machine.app.Text(TextId::PasswordRequired));
    EXPECT_EQ(Text(IDC_cmdOK), L"&Ok");
    EXPECT_EQ(Text(IDC_cmdCancel), L"&Annuler");
    EXPECT_EQ(Text(IDC_cmdAideMax), L"A&ide >>");
    EXPECT_EQ(Text(IDC_cmdAideMin), L"<< A&ide");
    EXPECT_EQ(Text(IDC_lblTitreLabel), machine.app.Text(TextId::PasswordRulesIntro));
    EXPECT_EQ(Text(IDC_lblCritere), machine.app.Text(TextId::RuleLength) + L"\r\n" +
                                        machine.app.Text(TextId::RuleAccountName) + L"\r\n" +
                                        machine.app.Text(TextId::RuleCategories));
    EXPECT_EQ(Text(IDC_lblAlphaNum), machine.app.Text(TextId::CategoryUppercase) + L"\r\n" +
                                         machine.app.Text(TextId::CategoryLowercase) + L"\r\n" +
                                         machine.app.Text(TextId::CategoryDigits) + L"\r\n" +
                                         machine.app.Text(TextId::CategoryOthers));
}

TEST_F(PasswordDialog, EnglishCaptions) {
    OpenInEnglish(PasswordMode::Creation);
    EXPECT_EQ(dialog->Title(), L"Password - backup");
    EXPECT_EQ(Text(IDC_lblTitre), L"Enter password");
    EXPECT_EQ(Text(IDC_lblConfirmation), L"Confirm password");
    EXPECT_EQ(Text(IDC_cmdCancel), L"&Cancel");
    EXPECT_EQ(Text(IDC_cmdAideMax), L"&Help >>");
    EXPECT_EQ(Text(IDC_cmdAideMin), L"<< &Help");
}

TEST_F(PasswordDialog, EveryCaptionFitsInBothLanguagesAndModes) {
    for (const int language : {0, 10000}) {
        for (const PasswordMode mode : {PasswordMode::Creation, PasswordMode::Entry}) {
            machine.app.language->lngLangue = language;
            Open(mode);
            EXPECT_EQ(ClippedCaptions(dialog->Handle()), std::vector<std::string>());
            EXPECT_EQ(OverlappingControls(dialog->Handle()), std::vector<std::string>());
            Click(IDC_cmdAideMax);
            EXPECT_EQ(OverlappingControls(dialog->Handle()), std::vector<std::string>());
            EXPECT_EQ(TooLargeForScreen(dialog->Handle()), "");
            EXPECT_EQ(AccessKeyClashes(dialog->Handle()), L"");
            dialog->Unload();
        }
    }
}

TEST_F(PasswordDialog, TabGoesDownTheStackOfTheEntryMode) {
    Open(PasswordMode::Entry);
    EXPECT_EQ(TabOrder(dialog->Handle()), (Ids{IDC_txtMotPasse, IDC_cmdCancel, IDC_cmdOK, IDC_cmdAideMax}));
}

TEST_F(PasswordDialog, EveryControlIsReachedByKeyboardAndNamed) {
    Open(PasswordMode::Creation);
    EXPECT_EQ(TabOrder(dialog->Handle()),
              (Ids{IDC_txtMotPasse, IDC_txtConfirmation, IDC_cmdOK, IDC_cmdCancel, IDC_cmdAideMax}));
    EXPECT_EQ(UnreachableControls(dialog->Handle()), Ids());
    EXPECT_EQ(UnlabelledFields(dialog->Handle()), Ids());
}

TEST_F(PasswordDialog, EverythingThatShowsLiesInsideTheWindow) {
    for (const PasswordMode mode : {PasswordMode::Creation, PasswordMode::Entry}) {
        for (const bool isHelpShown : {false, true}) {
            Open(mode);
            if (isHelpShown) Click(IDC_cmdAideMax);
            for (int id = IDC_lblNotaBene; id <= IDC_lblAlphaNum; ++id) {
                if (!IsVisible(id)) continue;
                const RECT place = Place(id);
                EXPECT_LE(place.bottom, Inner().bottom) << id;
                EXPECT_LE(place.right, Inner().right) << id;
                EXPECT_GE(place.top, 0) << id;
            }
            dialog->Unload();
        }
    }
}

TEST_F(PasswordDialog, CreationShowsTheConfirmationAndTheExplanation) {
    Open(PasswordMode::Creation);
    for (const int id : {IDC_lblNotaBene, IDC_lblConfirmation, IDC_txtConfirmation, IDC_cmdCancel, IDC_cmdAideMax})
        EXPECT_TRUE(IsVisible(id)) << id;
    EXPECT_TRUE(IsWindowEnabled(At(IDC_txtConfirmation)));
    for (const int id : {IDC_frameAide, IDC_lblCritere, IDC_cmdAideMin}) EXPECT_FALSE(IsVisible(id)) << id;
    EXPECT_EQ(OuterHeight(), HeightPixels(2865));
}

TEST_F(PasswordDialog, EntryStacksWhatItNeedsUnderItsTitle) {
    Open(PasswordMode::Entry);
    for (const int id : {IDC_lblNotaBene, IDC_lblConfirmation, IDC_txtConfirmation}) EXPECT_FALSE(IsVisible(id)) << id;
    EXPECT_EQ(TopTwips(IDC_lblTitre), 60);
    int bottom = Place(IDC_lblTitre).bottom;
    for (const int id : {IDC_txtMotPasse, IDC_cmdCancel, IDC_cmdOK, IDC_cmdAideMax}) {
        EXPECT_TRUE(IsVisible(id)) << id;
        EXPECT_GE(Place(id).top, bottom) << id;
        bottom = Place(id).bottom;
    }
    EXPECT_EQ(OuterHeight(), HeightPixels(1800));
}

TEST_F(PasswordDialog, HelpOpensAndShutsByModesHeights) {
    Open(PasswordMode::Creation);
    Click(IDC_cmdAideMax);
    EXPECT_EQ(OuterHeight(), HeightPixels(6525));
    EXPECT_EQ(TopTwips(IDC_frameAide), TopTwips(IDC_cmdAideMax));
    EXPECT_TRUE(IsVisible(IDC_cmdAideMin));
    EXPECT_FALSE(IsVisible(IDC_cmdAideMax));
    EXPECT_TRUE(IsVisible(IDC_lblAlphaNum));
    Click(IDC_cmdAideMin);
    EXPECT_EQ(OuterHeight(), HeightPixels(2865));
    EXPECT_EQ(TopTwips(IDC_frameAide), 2280);
    EXPECT_FALSE(IsVisible(IDC_cmdAideMin));
    EXPECT_TRUE(IsVisible(IDC_cmdAideMax));
    dialog->Unload();
    Open(PasswordMode::Entry);
    Click(IDC_cmdAideMax);
    EXPECT_EQ(OuterHeight(), HeightPixels(5525));
    EXPECT_EQ(TopTwips(IDC_frameAide), TopTwips(IDC_cmdAideMax));
    Click(IDC_cmdAideMin);
    EXPECT_EQ(OuterHeight(), HeightPixels(1800));
}

TEST_F(PasswordDialog, HelpOpenedByKeyboardKeepsTheKeyboard) {
    Open(PasswordMode::Creation);
    SetFocus(At(IDC_cmdAideMax));
    Click(IDC_cmdAideMax);
    EXPECT_TRUE(HasFocus(IDC_cmdAideMin));
}

TEST_F(PasswordDialog, PasswordsAreMaskedAndTheFocusStartsInTheFirst) {
    Open(PasswordMode::Creation);
    EXPECT_NE(SendMessageW(At(IDC_txtMotPasse), EM_GETPASSWORDCHAR, 0, 0), 0);
    EXPECT_NE(SendMessageW(At(IDC_txtConfirmation), EM_GETPASSWORDCHAR, 0, 0), 0);
    EXPECT_TRUE(HasFocus(IDC_txtMotPasse));
    dialog->Unload();
    Open(PasswordMode::Entry);
    EXPECT_TRUE(HasFocus(IDC_txtMotPasse));
}

TEST_F(PasswordDialog, EnterInThePasswordBoxMovesToTheConfirmation) {
    Open(PasswordMode::Creation);
    Type(IDC_txtMotPasse, GoodPassword);
    Press(IDC_txtMotPasse, VK_RETURN);
    EXPECT_TRUE(dialog->IsLoaded());
    EXPECT_TRUE(HasFocus(IDC_txtConfirmation));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(PasswordDialog, EnterInTheConfirmationAccepts) {
    Open(PasswordMode::Creation);
    Type(IDC_txtMotPasse, GoodPassword);
    Type(IDC_txtConfirmation, GoodPassword);
    Press(IDC_txtConfirmation, VK_RETURN);
    EXPECT_FALSE(dialog->IsLoaded());
    EXPECT_EQ(dialog->Answer(), GoodPassword);
}

TEST_F(PasswordDialog, EnterInEntryModeAccepts) {
    Open(PasswordMode::Entry);
    Type(IDC_txtMotPasse, L"x");
    Press(IDC_txtMotPasse, VK_RETURN);
    EXPECT_FALSE(dialog->IsLoaded());
    EXPECT_EQ(dialog->Answer(), L"x");
}

TEST_F(PasswordDialog, EscapeCancels) {
    Open(PasswordMode::Creation);
    Press(IDC_txtMotPasse, VK_ESCAPE);
    EXPECT_FALSE(dialog->IsLoaded());
    EXPECT_FALSE(dialog->Answer().has_value());
}

TEST_F(PasswordDialog, CrossCancelsEvenRightAfterOk) {
    Open(PasswordMode::Creation);
    Type(IDC_txtMotPasse, GoodPassword);
    Type(IDC_txtConfirmation, GoodPassword);
    PostMessageW(dialog->Handle(), WM_CLOSE, 0, 0);
    Click(IDC_cmdOK);
    EXPECT_FALSE(dialog->IsLoaded());
    EXPECT_FALSE(dialog->Answer().has_value());
}

TEST_F(PasswordDialog, SecondClickOnOkThatFindsTheBoxesChangedIsTheOneThatCounts) {
    Open(PasswordMode::Creation);
    Type(IDC_txtMotPasse, GoodPassword);
    Type(IDC_txtConfirmation, GoodPassword);
    // Handled between the first check and the keeping of the password.
    PostMessageW(At(IDC_txtMotPasse), WM_CHAR, L'x', 0);
    PostMessageW(dialog->Handle(), WM_COMMAND, MAKEWPARAM(IDC_cmdOK, BN_CLICKED), 0);
    Click(IDC_cmdOK);
    EXPECT_TRUE(dialog->IsLoaded());
    EXPECT_FALSE(dialog->Answer().has_value());
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(PasswordDialog, StaysWhileAMessageIsOpenOverIt) {
    Open(PasswordMode::Creation);
    EnableWindow(dialog->Handle(), FALSE);
    Close();
    EXPECT_TRUE(dialog->IsLoaded());
}

TEST_F(PasswordDialog, OkIsTheDefaultButton) {
    Open(PasswordMode::Creation);
    EXPECT_EQ(DefaultButton(), IDC_cmdOK);
}

TEST_F(PasswordDialog, WeakPasswordIsRefusedAndTheHelpOpens) {
    Open(PasswordMode::Creation);
    Type(IDC_txtMotPasse, L"abcdefg1");
    Type(IDC_txtConfirmation, L"abcdefg1");
    Click(IDC_cmdOK);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, machine.app.Text(TextId::PasswordRefused));
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Mot de passe invalide");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Information);
    EXPECT_EQ(Text(IDC_txtMotPasse), L"");
    EXPECT_EQ(Text(IDC_txtConfirmation), L"");
    EXPECT_TRUE(IsVisible(IDC_cmdAideMin));
    EXPECT_TRUE(HasFocus(IDC_txtMotPasse));
    EXPECT_FALSE(dialog->Answer().has_value());
}

TEST_F(PasswordDialog, EmptyConfirmationIsRefusedAndAskedForAgain) {
    Open(PasswordMode::Creation);
    Type(IDC_txtMotPasse, GoodPassword);
    Click(IDC_cmdOK);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, machine.app.Text(TextId::PasswordsDiffer));
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Mot de passe pas identique");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Information);
    EXPECT_EQ(Text(IDC_txtMotPasse), GoodPassword);
    EXPECT_TRUE(HasFocus(IDC_txtConfirmation));
    EXPECT_FALSE(dialog->Answer().has_value());
    EXPECT_TRUE(dialog->IsLoaded());
}

TEST_F(PasswordDialog, DifferentConfirmationIsEmptied) {
    Open(PasswordMode::Creation);
    Type(IDC_txtMotPasse, GoodPassword);
    Type(IDC_txtConfirmation, L"abcdefg1");
    Click(IDC_cmdOK);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(Text(IDC_txtConfirmation), L"");
}

TEST_F(PasswordDialog, ConfirmationMayDifferByBlanksAroundAndThePasswordKeepsItsOwn) {
    Open(PasswordMode::Creation);
    Type(IDC_txtMotPasse, L" Abcdefg1  ");
    Type(IDC_txtConfirmation, L"Abcdefg1");
    Click(IDC_cmdOK);
    EXPECT_FALSE(dialog->IsLoaded());
    EXPECT_EQ(dialog->Answer(), L" Abcdefg1  ");
}

TEST_F(PasswordDialog, EntryModeChecksNothing) {
    Open(PasswordMode::Entry);
    Click(IDC_cmdOK);
    EXPECT_FALSE(dialog->IsLoaded());
    EXPECT_EQ(dialog->Answer(), L"");
}

TEST_F(PasswordDialog, AskingForgetsTheFormerPasswordAndSaysNoWhenCancelled) {
    machine.app.archive->backupPassword = L"former";
    const UINT_PTR closing = SetTimer(nullptr, 0, 20, CloseTheDialog);
    EXPECT_FALSE(modGestionMotPasse::DemanderMotPasse(machine.app, nullptr, PasswordMode::Entry));
    KillTimer(nullptr, closing);
    EXPECT_EQ(machine.app.archive->backupPassword, L"");
}

TEST_F(PasswordDialog, LeavesNothingBehind) {
    const auto useOnce = [this](PasswordMode mode) {
        Open(mode);
        Click(IDC_cmdAideMax);
        dialog->Unload();
    };
    // What the system keeps for good of a first time is not the dialog's.
    useOnce(PasswordMode::Creation);
    useOnce(PasswordMode::Entry);
    const Footprint before = FootprintNow();
    for (int round = 0; round < 20; ++round) useOnce(round % 2 == 0 ? PasswordMode::Creation : PasswordMode::Entry);
    EXPECT_EQ(FootprintNow(), before);
}

TEST_F(PasswordDialog, WhatIsHiddenCannotBeReachedByItsAccessKey) {
    Open(PasswordMode::Entry);
    for (const int id : {IDC_txtConfirmation, IDC_lblConfirmation, IDC_cmdAideMin})
        EXPECT_FALSE(IsWindowEnabled(At(id))) << id;
    Click(IDC_cmdAideMax);
    EXPECT_FALSE(IsWindowEnabled(At(IDC_cmdAideMax)));
    EXPECT_TRUE(IsWindowEnabled(At(IDC_cmdAideMin)));
    Click(IDC_cmdAideMin);
    EXPECT_TRUE(IsWindowEnabled(At(IDC_cmdAideMax)));
    EXPECT_FALSE(IsWindowEnabled(At(IDC_cmdAideMin)));
}

} // namespace
