#pragma once

#include "ui/Form.h"
#include "ui/Subclass.h"

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

    /// Runs `handler` when a virtual key is pressed in the control. Only on a loaded form.
    void On(WPARAM key, std::function<void()> handler);

  private:
    LRESULT TakeKeys(const WindowMessage& message);

    Form& form_;
    int controlId_;
    std::map<WPARAM, std::function<void()>> handlers_;
    Subclass subclass_;
};

} // namespace ui
