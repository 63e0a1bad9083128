#include "BackupWindowBench.h"
#include "ImportSwap.h"
#include "RestoreWindowBench.h"
#include "TestForm.h"
#include "ui/SessionEndHold.h"

extern "C" {
extern decltype(&ShutdownBlockReasonCreate) __imp_ShutdownBlockReasonCreate;
extern decltype(&ShutdownBlockReasonDestroy) __imp_ShutdownBlockReasonDestroy;
}

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

HWND reasonWindow = nullptr;
std::wstring reason;

BOOL WINAPI TakeReason(HWND window, LPCWSTR text) {
    reasonWindow = window;
    reason = text;
    return TRUE;
}
BOOL WINAPI DropReason(HWND window) {
    if (window == reasonWindow) reason.clear();
    return TRUE;
}

/// What Windows has to show to a user who wants to leave.
class ReasonWatch {
  public:
    ReasonWatch() { reason.clear(); }

  private:
    const ImportSwap<decltype(&ShutdownBlockReasonCreate)> create_{&__imp_ShutdownBlockReasonCreate, &TakeReason};
    const ImportSwap<decltype(&ShutdownBlockReasonDestroy)> destroy_{&__imp_ShutdownBlockReasonDestroy, &DropReason};
};

TEST(SessionEndHold, GivesWindowsTheReasonForAsLongAsItLives) {
    const ReasonWatch watch;
    TestForm form;
    form.Create();
    {
        const ui::SessionEndHold hold(form, L"Work");
        EXPECT_EQ(reason, L"Work");
        EXPECT_EQ(reasonWindow, form.Handle());
    }
    EXPECT_EQ(reason, L"");
}

TEST_F(BackupWindowTest, TheSessionDoesNotEndDuringARun) {
    const ReasonWatch watch;
    OpenRemovable();
    AddItems();
    machine.files.AddFolder(L"E:");
    int looks = 0;
    whileArchiving = [&] {
        ++looks;
        EXPECT_EQ(reason, Resource(TextId::BackupRuns));
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
    const ReasonWatch watch;
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    int looks = 0;
    machine.processes.effect = [&](const std::wstring&) {
        ++looks;
        EXPECT_EQ(reason, machine.app.Text(TextId::RestoreRuns));
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
