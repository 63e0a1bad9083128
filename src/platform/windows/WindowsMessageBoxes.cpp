#include "platform/windows/WindowsMessageBoxes.h"

#include <windows.h>

namespace {

struct Candidates {
    HWND usable = nullptr;
    HWND visible = nullptr;
};

BOOL CALLBACK TakeCandidate(HWND window, LPARAM parameter) {
    // Tool tips and opened lists are windows of the thread as well.
    const bool isWindow = (GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    if (!isWindow || !IsWindowVisible(window)) return TRUE;
    auto& found = *reinterpret_cast<Candidates*>(parameter);
    if (found.visible == nullptr) found.visible = window;
    if (!IsWindowEnabled(window)) return TRUE;
    found.usable = window;
    return FALSE;
}

/// While the user is in another program no window of ours is active; a box without an owner would then leave ours
/// open to clicks. While a window is being loaded there is none but the one that waits for it.
HWND OwnerOfBox() {
    if (const HWND active = GetActiveWindow(); active != nullptr && IsWindowVisible(active)) return active;
    Candidates found;
    EnumThreadWindows(GetCurrentThreadId(), TakeCandidate, reinterpret_cast<LPARAM>(&found));
    return found.usable != nullptr ? found.usable : found.visible;
}

} // namespace

int WindowsMessageBoxes::Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) {
    const HWND owner = OwnerOfBox();
    const bool wasEnabled = owner != nullptr && IsWindowEnabled(owner);
    const int answer = MessageBoxW(owner, text.c_str(), title.c_str(), style);
    // A window that waits for another one must not come to life with the end of a box.
    if (owner != nullptr && !wasEnabled) EnableWindow(owner, FALSE);
    return answer;
}
