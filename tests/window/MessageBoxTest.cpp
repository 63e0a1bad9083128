#include "platform/windows/WindowsMessageBoxes.h"
#include "support/MessageBoxesContract.h"

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

/// Answers the boxes of this thread as long as it lives.
class BoxAnswerer {
  public:
    explicit BoxAnswerer(int button) {
        seen = {};
        answer = static_cast<WORD>(button);
    }
    ~BoxAnswerer() { KillTimer(nullptr, timer_); }
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

  private:
    UINT_PTR timer_ = SetTimer(nullptr, 0, 10, LookForBox);
};

int ShowAndAnswer(WORD button, std::uint32_t style) {
    const BoxAnswerer answerer(button);
    return WindowsMessageBoxes().Show(L"First line.\nSecond line.", L"Titre é", style);
}

/// The real boxes, answered as they come.
struct WindowsBoxesBench {
    struct Boxes : MessageBoxes {
        explicit Boxes(WindowsBoxesBench& bench) : bench_(bench) {}
        int Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) override {
            const BoxAnswerer answerer(bench_.button);
            const int result = WindowsMessageBoxes().Show(text, title, style);
            bench_.text = seen.text;
            bench_.title = seen.title;
            return result;
        }

      private:
        WindowsBoxesBench& bench_;
    };

    void Press(int next) { button = next; }
    int button = IDOK;
    std::wstring text;
    std::wstring title;
    Boxes boxes{*this};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, MessageBoxesContract, WindowsBoxesBench);

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
