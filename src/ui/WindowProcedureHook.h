#pragma once

#include "ui/Windows.h"

namespace ui {

/// A window procedure put in front of a window's own one. It may go before the window or after it.
class WindowProcedureHook {
  public:
    WindowProcedureHook() = default;
    WindowProcedureHook(const WindowProcedureHook&) = delete;
    WindowProcedureHook& operator=(const WindowProcedureHook&) = delete;
    ~WindowProcedureHook() { Remove(); }

    /// Saves the procedure of `window` and installs `procedure`. Without effect while a window is hooked already.
    void Install(HWND window, WNDPROC procedure);
    /// Puts the saved procedure back. Nothing to do when it is back already or the window has gone.
    void Remove();
    bool IsInstalled() const { return saved_ != nullptr; }

    /// Passes a message on to the saved procedure. Only while installed.
    LRESULT CallSaved(UINT message, WPARAM wParam, LPARAM lParam) const;

    /// The hook of a window, for its procedure; null when it has none.
    static WindowProcedureHook* Of(HWND window);

  private:
    HWND window_ = nullptr;
    WNDPROC saved_ = nullptr;
    WNDPROC installed_ = nullptr;
};

} // namespace ui
