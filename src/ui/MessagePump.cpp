#include "ui/MessagePump.h"

namespace ui {

namespace {

// The pointer belongs to the user-interface thread, of which there is one.
bool isHourglass = false;
KeyTranslation translateKeys = nullptr;

} // namespace

void SetKeyTranslation(KeyTranslation translation) {
    translateKeys = translation;
}

void Dispatch(MSG& message) {
    if (message.hwnd != nullptr && translateKeys != nullptr &&
        translateKeys(GetAncestor(message.hwnd, GA_ROOT), message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void RunPendingMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        Dispatch(message);
    }
}

void PaintPendingWindows() {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE | PM_QS_PAINT)) DispatchMessageW(&message);
}

void RunMessagesUntil(const std::function<bool()>& isDone) {
    MSG message;
    while (!isDone()) {
        const BOOL result = GetMessageW(&message, nullptr, 0, 0);
        if (result == 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (result > 0) Dispatch(message);
    }
}

void ShowHourglass(bool isShown) {
    isHourglass = isShown;
    SetCursor(LoadCursorW(nullptr, isShown ? IDC_WAIT : IDC_ARROW));
}

bool IsHourglassShown() {
    return isHourglass;
}

} // namespace ui
