#include "platform/windows/WindowsMessageBoxes.h"

#include <windows.h>

namespace {

BOOL CALLBACK TakeFirstUsable(HWND window, LPARAM result) {
    if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
    *reinterpret_cast<HWND*>(result) = window;
    return FALSE;
}

/// While the user is in another program no window of ours is active; a box without an owner would then leave ours
/// open to clicks.
HWND OwnerOfBox() {
    if (const HWND active = GetActiveWindow()) return active;
    HWND usable = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), TakeFirstUsable, reinterpret_cast<LPARAM>(&usable));
    return usable;
}

} // namespace

std::int16_t WindowsMessageBoxes::Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) {
    return static_cast<std::int16_t>(MessageBoxW(OwnerOfBox(), text.c_str(), title.c_str(), style));
}
