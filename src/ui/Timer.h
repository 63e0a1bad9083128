#pragma once

#include "ui/Form.h"

#include <functional>

namespace ui {

/// Runs something every so often on the user-interface thread, until it is stopped or the form's window has gone.
class Timer {
  public:
    /// What `steps` let through is handed to the form.
    Timer(Form& form, std::function<void()> steps) : form_(form), steps_(std::move(steps)) {}
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer() { Stop(); }

    /// Starts to count anew. Only on a loaded form.
    void Start(UINT milliseconds);
    void Stop();
    bool IsRunning() const { return window_ != nullptr && window_ == form_.Handle(); }

  private:
    static void CALLBACK Run(HWND window, UINT message, UINT_PTR timer, DWORD now);

    Form& form_;
    std::function<void()> steps_;
    /// The window that counts: it takes its timers away with it.
    HWND window_ = nullptr;
};

} // namespace ui
