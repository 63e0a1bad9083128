#pragma once

#include "ui/Form.h"

#include <functional>

namespace ui {

/// Runs something a moment later on the user-interface thread, once for however many requests came meanwhile. Dropped
/// with the form's window.
class DelayedCall {
  public:
    /// What `steps` let through is handed to the form.
    DelayedCall(Form& form, std::function<void()> steps) : form_(form), steps_(std::move(steps)) {}
    DelayedCall(const DelayedCall&) = delete;
    DelayedCall& operator=(const DelayedCall&) = delete;
    ~DelayedCall() { Cancel(); }

    /// Asks for the call in `milliseconds`; a call that is due already stays where it is. Only on a loaded form.
    void Request(UINT milliseconds);
    void Cancel();

  private:
    static void CALLBACK Run(HWND window, UINT message, UINT_PTR timer, DWORD now);

    Form& form_;
    std::function<void()> steps_;
    HWND window_ = nullptr;
};

} // namespace ui
