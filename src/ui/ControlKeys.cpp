#include "ui/ControlKeys.h"

#include <utility>

namespace ui {

ControlKeys::~ControlKeys() {
    if (HWND window = form_.ControlHandle(controlId_); window != nullptr) RemoveWindowSubclass(window, Procedure, 0);
}

void ControlKeys::On(WPARAM key, std::function<void()> handler) {
    handlers_[key] = std::move(handler);
    SetWindowSubclass(form_.ControlHandle(controlId_), Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK ControlKeys::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR reference) {
    const auto* keys = reinterpret_cast<const ControlKeys*>(reference);
    switch (message) {
    case WM_GETDLGCODE: {
        const auto* asked = reinterpret_cast<const MSG*>(lParam);
        const bool isTaken =
            asked != nullptr && asked->message == WM_KEYDOWN && keys->handlers_.contains(asked->wParam);
        return DefSubclassProc(window, message, wParam, lParam) | (isTaken ? DLGC_WANTMESSAGE : 0);
    }
    case WM_KEYDOWN:
        if (const auto handler = keys->handlers_.find(wParam); handler != keys->handlers_.end()) {
            // As a task of the form, so that nothing thrown leaves this procedure.
            keys->form_.Post(handler->second);
            return 0;
        }
        break;
    case WM_NCDESTROY:
        RemoveWindowSubclass(window, Procedure, 0);
        break;
    default:
        break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace ui
