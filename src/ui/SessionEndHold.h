#pragma once

#include "ui/Form.h"

#include <string>

namespace ui {

/// While it lives, Windows' question whether the session may end is answered with "not now", and Windows shows the
/// user the reason, even while the program is too busy to answer. May outlive the form's window, not the form.
class SessionEndHold {
  public:
    SessionEndHold(Form& form, const std::wstring& reason);
    ~SessionEndHold();
    SessionEndHold(const SessionEndHold&) = delete;
    SessionEndHold& operator=(const SessionEndHold&) = delete;

  private:
    Form& form_;
    HWND window_;
};

} // namespace ui
