#include "ui/WindowProcedureHook.h"

namespace ui {

namespace {

constexpr const wchar_t* HookProperty = L"Backup.Hook";

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

} // namespace

void WindowProcedureHook::Install(HWND window, WNDPROC procedure) {
    if (IsInstalled()) return;
    window_ = window;
    saved_ = ProcedureOf(window);
    installed_ = procedure;
    SetPropW(window, HookProperty, this);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

void WindowProcedureHook::Remove() {
    // The window's number may belong to another window by now: only a window that names this hook is its own.
    if (IsInstalled() && Of(window_) == this) {
        if (ProcedureOf(window_) == installed_)
            SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(saved_));
        RemovePropW(window_, HookProperty);
    }
    window_ = nullptr;
    saved_ = nullptr;
    installed_ = nullptr;
}

LRESULT WindowProcedureHook::CallSaved(UINT message, WPARAM wParam, LPARAM lParam) const {
    return CallWindowProcW(saved_, window_, message, wParam, lParam);
}

WindowProcedureHook* WindowProcedureHook::Of(HWND window) {
    return static_cast<WindowProcedureHook*>(GetPropW(window, HookProperty));
}

} // namespace ui
