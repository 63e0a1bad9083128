#include "BackupWindowBench.h"
#include "RestoreWindowBench.h"
#include "TestForm.h"
#include "ui/SessionEndHold.h"

namespace {

bool MaySessionEnd(HWND window) {
    return SendMessageW(window, WM_QUERYENDSESSION, 0, 0) != FALSE;
}

TEST(SessionEndHold, KeepsTheSessionUntilTheLastIsGone) {
    TestForm form;
    form.Create();
    EXPECT_TRUE(MaySessionEnd(form.Handle()));
    {
        const ui::SessionEndHold outer(form, L"Work");
        const ui::SessionEndHold inner(form, L"More work");
        EXPECT_FALSE(MaySessionEnd(form.Handle()));
    }
    EXPECT_TRUE(MaySessionEnd(form.Handle()));
}

TEST_F(BackupWindowTest, TheSessionDoesNotEndDuringARun) {
    OpenRemovable();
    AddItems();
    machine.files.AddFolder(L"E:");
    int looks = 0;
    whileArchiving = [&] {
        ++looks;
        EXPECT_FALSE(MaySessionEnd(form->Handle()));
    };
    bool couldEndAtTheMessage = false;
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) {
        couldEndAtTheMessage = MaySessionEnd(form->Handle());
    };
    EXPECT_TRUE(MaySessionEnd(form->Handle()));
    Click(IDC_cmdLancer);
    EXPECT_GT(looks, 0);
    EXPECT_TRUE(couldEndAtTheMessage) << "the backup is complete by then";
}

TEST_F(BackupWindowTest, TheSessionDoesNotEndDuringABurn) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    EXPECT_FALSE(MaySessionEnd(form->Handle()));
    Click(IDC_cmdStopWrite);
    EXPECT_TRUE(MaySessionEnd(form->Handle()));
}

TEST_F(RestoreWindow, TheSessionDoesNotEndDuringARestore) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    int looks = 0;
    machine.processes.effect = [&](const std::wstring&) {
        ++looks;
        EXPECT_FALSE(MaySessionEnd(form.Handle()));
    };
    bool couldEndAtTheMessage = false;
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) {
        couldEndAtTheMessage = MaySessionEnd(form.Handle());
    };
    EXPECT_TRUE(MaySessionEnd(form.Handle()));
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(looks, 3);
    EXPECT_TRUE(couldEndAtTheMessage);
}

} // namespace
