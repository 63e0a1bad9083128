#pragma once

#include "ui/Windows.h"

#include <functional>
#include <memory>

namespace ui {

/// A message on its way to a window.
struct WindowMessage {
    HWND window;
    UINT id;
    WPARAM wParam;
    LPARAM lParam;

    /// Hands the message on to whoever stands behind, at last to the window's own procedure; gives the answer.
    LRESULT PassOn() const { return DefSubclassProc(window, id, wParam, lParam); }
};

/// Stands before a window's own procedure and sees each message first. It may go before its window or after it, and
/// while one of its messages is being handled. On the user-interface thread only.
class Subclass {
  public:
    /// `steps` handle a message or pass it on, and give the answer. They must let nothing through: Windows is below.
    using Steps = std::function<LRESULT(const WindowMessage& message)>;

    Subclass() = default;
    Subclass(const Subclass&) = delete;
    Subclass& operator=(const Subclass&) = delete;
    ~Subclass() { Detach(); }

    /// Stands before `window` from now on, and before no other any more. Nothing happens when there is no window.
    void Attach(HWND window, Steps steps);
    void Detach();
    bool IsAttached() const { return window_ != nullptr; }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR reference);

    HWND window_ = nullptr;
    std::shared_ptr<const Steps> steps_;
};

} // namespace ui
