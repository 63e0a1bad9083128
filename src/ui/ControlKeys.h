#pragma once

#include "ui/Controls.h"

#include <functional>
#include <map>

namespace ui {

/// Keys to which a control gives a meaning of its own. They are taken before the control and the dialog see them, so
/// that Enter in a list need not press the default button.
class ControlKeys {
  public:
    ControlKeys(Form& form, int controlId) : form_(form), controlId_(controlId) {}
    ControlKeys(const ControlKeys&) = delete;
    ControlKeys& operator=(const ControlKeys&) = delete;
    ~ControlKeys();

    /// Runs `handler` when a virtual key is pressed in the control. Only on a loaded form.
    void On(WPARAM key, std::function<void()> handler);

  private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);

    Form& form_;
    int controlId_;
    std::map<WPARAM, std::function<void()>> handlers_;
};

} // namespace ui
