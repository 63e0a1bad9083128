#include "RestoreWindowBench.h"

#include "archive/forms/frmMotPasseIds.h"
#include "core/StartUpValues.h"

#include <utility>

namespace {

RestoreDialogScript* script = nullptr;

BOOL CALLBACK AnswerDialog(HWND window, LPARAM) {
    HWND box = GetDlgItem(window, IDC_txtMotPasse);
    if (ui::Form::Of(window) == nullptr || box == nullptr || !IsWindowVisible(window)) return TRUE;
    if (std::exchange(script->isAnswering, true)) return FALSE;
    if (script->beforeAnswer) script->beforeAnswer();
    script->isAnswering = false;
    const std::size_t at = script->seen++;
    if (at < script->passwords.size() && script->passwords[at]) {
        SetWindowTextW(box, script->passwords[at]->c_str());
        SendMessageW(GetDlgItem(window, IDC_cmdOK), BM_CLICK, 0, 0);
    } else {
        SendMessageW(GetDlgItem(window, IDC_cmdCancel), BM_CLICK, 0, 0);
    }
    return FALSE;
}

void CALLBACK LookForDialog(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), AnswerDialog, 0);
}

constexpr UINT LongerThanARefreshMilliseconds = 250;
bool hasTimePassed = false;

void CALLBACK LetTimePass(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    hasTimePassed = true;
}

} // namespace

RestoreWindow::RestoreWindow() {
    machine.files.AddFolder(L"C:\\Valcoreaux\\Backup");
    machine.drives.Add(L"C:\\", DriveType::Fixed);
    machine.usb.busTypes[L"C:"] = 11;
    machine.app.startUp->dblEspaceDisponible = 1e9;
    script = &dialogs;
    timer_ = SetTimer(nullptr, 0, 10, LookForDialog);
}
RestoreWindow::~RestoreWindow() {
    KillTimer(nullptr, timer_);
    script = nullptr;
}

void RestoreWindow::LetRefreshHappen() {
    hasTimePassed = false;
    SetTimer(nullptr, 0, LongerThanARefreshMilliseconds, LetTimePass);
    EXPECT_TRUE(WaitFor([] { return hasTimePassed; }));
}
