#pragma once

#include "ui/Windows.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace ui {

/// A message on its way to a window.
struct WindowMessage {
    HWND window;
    UINT id;
    WPARAM wParam;
    LPARAM lParam;
    std::uint64_t taker = 0;  ///< the number of the subclass that has it
    WNDPROC behind = nullptr; ///< the window's own procedure

    /// Hands the message on to whoever stands behind, at last to the window's own procedure; gives the answer.
    LRESULT PassOn() const;
};

/// Stands before a window's own procedure and sees each message first, the last one to come before the others. It may
/// go before its window or after it, and while one of its messages is being handled. On the user-interface thread only.
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
    friend struct WindowMessage;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    std::uint64_t number_ = 0; ///< later ones have higher ones
    std::shared_ptr<const Steps> steps_;
};

} // namespace ui
