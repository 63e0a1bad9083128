#include "BackupWindowBench.h"
#include "MainWindowBench.h"
#include "TestForm.h"

namespace {

class ControlStates : public testing::Test {
  protected:
    void SetUp() override {
        form.Create();
        form.Show();
    }
    static bool IsEnabled(const ui::Control& control) { return IsWindowEnabled(control.Handle()) != FALSE; }

    TestForm form;
};

TEST_F(ControlStates, WhatIsHiddenIsDisabledUntilItIsShownAgain) {
    form.testButton.Show(false);
    EXPECT_FALSE(IsEnabled(form.testButton));
    EXPECT_TRUE(form.testButton.IsEnabled()) << "what is wanted of it is kept";
    form.testButton.Show(true);
    EXPECT_TRUE(IsEnabled(form.testButton));
}

TEST_F(ControlStates, WhatIsDisabledWhileItIsHiddenComesBackDisabled) {
    form.testButton.Show(false);
    form.testButton.Enable(false);
    form.testButton.Show(true);
    EXPECT_FALSE(IsEnabled(form.testButton));
    form.testButton.Enable(true);
    EXPECT_TRUE(IsEnabled(form.testButton));
}

TEST_F(ControlStates, WhatIsEnabledWhileItIsHiddenWaitsUntilItIsShown) {
    form.testButton.Enable(false);
    form.testButton.Show(false);
    form.testButton.Enable(true);
    EXPECT_FALSE(IsEnabled(form.testButton));
    form.testButton.Show(true);
    EXPECT_TRUE(IsEnabled(form.testButton));
}

TEST_F(ControlStates, AFrameDisablesWhatItHidesAndKeepsWhatWasWanted) {
    form.testText.Enable(false);
    form.SetFrame(IDC_testFrame, {IDC_testLabel, IDC_testText, IDC_testCancel});
    form.testFrame.Show(false);
    EXPECT_FALSE(IsEnabled(form.testCancel));
    form.testFrame.Show(true);
    EXPECT_TRUE(IsEnabled(form.testCancel));
    EXPECT_FALSE(IsEnabled(form.testText));
}

TEST_F(ControlStates, TheFocusLeavesWhatIsHidden) {
    form.testButton.SetFocus();
    ASSERT_TRUE(form.testButton.HasFocus());
    form.testButton.Show(false);
    EXPECT_NE(GetFocus(), nullptr);
    EXPECT_FALSE(form.testButton.HasFocus());
}

TEST_F(ControlStates, AFormThatIsLoadedAgainForgetsThem) {
    form.testButton.Show(false);
    form.testText.Enable(false);
    form.Unload();
    EXPECT_FALSE(form.testButton.IsEnabled());
    form.Create();
    EXPECT_TRUE(IsEnabled(form.testButton));
    EXPECT_TRUE(form.testText.IsEnabled());
}

/// The controls of a window that cannot be seen but take input all the same, by access key for one.
std::vector<int> HiddenButEnabled(HWND form) {
    std::vector<int> found;
    for (HWND control = GetWindow(form, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        if (!IsWindowVisible(control) && IsWindowEnabled(control)) found.push_back(GetDlgCtrlID(control));
    }
    return found;
}

/// The access keys of labels that are never seen.
std::vector<int> HiddenLabelsWithAccessKeys(HWND form) {
    std::vector<int> found;
    for (HWND control = GetWindow(form, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        wchar_t name[32] = {};
        wchar_t text[256] = {};
        GetClassNameW(control, name, 32);
        GetWindowTextW(control, text, 256);
        const bool isLabel = lstrcmpiW(name, L"Static") == 0;
        if (isLabel && !IsWindowVisible(control) && std::wstring(text).find(L'&') != std::wstring::npos)
            found.push_back(GetDlgCtrlID(control));
    }
    return found;
}

TEST_F(MainWindowTest, NothingHiddenTakesInputInEitherMode) {
    AddEverything();
    Start();
    EXPECT_EQ(HiddenButEnabled(form.Handle()), Ids{});
    EXPECT_EQ(HiddenLabelsWithAccessKeys(form.Handle()), Ids{});
    Click(IDC_optRestaure);
    EXPECT_EQ(HiddenButEnabled(form.Handle()), Ids{});
    EXPECT_FALSE(IsEnabled(IDC_optCD));
    Click(IDC_optBackup);
    EXPECT_EQ(HiddenButEnabled(form.Handle()), Ids{});
    EXPECT_TRUE(IsEnabled(IDC_optCD));
}

TEST_F(BackupWindowTest, NothingHiddenTakesInputDuringARun) {
    OpenCd(BlankDisc(MediaKind::CdRw, 700 * Megabyte));
    AddItems();
    EXPECT_TRUE(IsEnabled(IDC_cmdEffacerDisque));
    EXPECT_EQ(HiddenButEnabled(form->Handle()), std::vector<int>{});
    int looks = 0;
    whileArchiving = [&] {
        ++looks;
        EXPECT_EQ(HiddenButEnabled(form->Handle()), std::vector<int>{});
        EXPECT_FALSE(IsEnabled(IDC_cmdEffacerDisque));
    };
    givesPassword = true;
    archiveSizeBytes = 800 * Megabyte;
    Click(IDC_cmdLancer);
    EXPECT_GT(looks, 0);
    EXPECT_TRUE(IsEnabled(IDC_cmdEffacerDisque));
    EXPECT_EQ(HiddenButEnabled(form->Handle()), std::vector<int>{});
}

} // namespace
