#include "platform/windows/WindowsMessageBoxes.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace {

/// What a box showed, taken from the box itself just before it is answered.
struct SeenBox {
    bool isSeen = false;
    std::wstring text;
    std::wstring title;
    HWND owner = nullptr;
    bool isOwnerEnabled = true;
    int focusedButton = 0;
    bool hasNo = false;
};

SeenBox seen;
WORD answer = 0;

BOOL CALLBACK AnswerBox(HWND window, LPARAM) {
    wchar_t className[32] = {};
    GetClassNameW(window, className, 32);
    if (std::wstring(className) != L"#32770" || !IsWindowVisible(window)) return TRUE;
    wchar_t text[256] = {};
    GetWindowTextW(window, text, 256);
    seen.title = text;
    GetDlgItemTextW(window, 0xFFFF, text, 256);
    seen.text = text;
    seen.owner = GetWindow(window, GW_OWNER);
    seen.isOwnerEnabled = seen.owner && IsWindowEnabled(seen.owner);
    seen.focusedButton = GetDlgCtrlID(GetFocus());
    seen.hasNo = GetDlgItem(window, IDNO) != nullptr;
    seen.isSeen = true;
    SendMessageW(window, WM_COMMAND, answer, 0);
    return FALSE;
}

void CALLBACK LookForBox(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), AnswerBox, 0);
}

int ShowAndAnswer(WORD button, std::uint32_t style) {
    seen = {};
    answer = button;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, LookForBox);
    const int result = WindowsMessageBoxes().Show(L"First line.\nSecond line.", L"Titre é", style);
    KillTimer(nullptr, timer);
    return result;
}

TEST(MessageBoxes, ShowsTextAndTitleAndGivesTheButton) {
    EXPECT_EQ(ShowAndAnswer(IDYES, box::YesNo | box::Question), box::AnswerYes);
    EXPECT_EQ(seen.text, L"First line.\nSecond line.");
    EXPECT_EQ(seen.title, L"Titre é");
    EXPECT_TRUE(seen.hasNo);
    EXPECT_EQ(seen.focusedButton, IDYES);
}

TEST(MessageBoxes, PassesTheStyleOn) {
    EXPECT_EQ(ShowAndAnswer(IDNO, box::YesNo | box::Information | box::DefaultButton2), box::AnswerNo);
    EXPECT_EQ(seen.focusedButton, IDNO);
    EXPECT_EQ(ShowAndAnswer(IDOK, box::Critical), IDOK);
    EXPECT_FALSE(seen.hasNo);
}

TEST(MessageBoxes, BlocksTheWindowItStandsOver) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100,
                                        nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(window, nullptr);
    ShowAndAnswer(IDOK, box::Ok);
    EXPECT_EQ(seen.owner, window);
    EXPECT_FALSE(seen.isOwnerEnabled);
    EXPECT_TRUE(IsWindowEnabled(window));
    DestroyWindow(window);
}

TEST(MessageBoxes, HasAnOwnerEvenWhileNoWindowIsActive) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100,
                                        nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetActiveWindow(nullptr);
    ASSERT_EQ(GetActiveWindow(), nullptr);
    ShowAndAnswer(IDOK, box::Ok);
    EXPECT_EQ(seen.owner, window);
    DestroyWindow(window);
}

} // namespace
