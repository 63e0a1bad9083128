#pragma once

#include "ui/Controls.h"
#include "win32/UniqueHandle.h"

#include <map>
#include <string>

namespace ui {

/// The tool tips of a form's controls. They also show over a control that is disabled, to say why it is.
class ToolTips {
  public:
    explicit ToolTips(Form& form) : form_(form) {}
    ToolTips(const ToolTips&) = delete;
    ToolTips& operator=(const ToolTips&) = delete;

    /// Sets a control's tool tip; an empty text takes it away. Only on a loaded form.
    void Set(const Control& control, const std::wstring& text);
    std::wstring Text(const Control& control) const;

  private:
    void Register(const Control& control);

    Form& form_;
    UniqueWindow window_;
    std::map<int, std::wstring> texts_;
};

} // namespace ui
