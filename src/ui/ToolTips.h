#pragma once

#include "ui/Controls.h"
#include "win32/UniqueHandle.h"

#include <map>
#include <string>
#include <utility>

namespace ui {

/// The tool tips of a form's controls. They also show over a control that is disabled, to say why it is, but not where
/// a control is hidden.
class ToolTips {
  public:
    explicit ToolTips(Form& form) : form_(form) {}
    ToolTips(const ToolTips&) = delete;
    ToolTips& operator=(const ToolTips&) = delete;

    /// Sets a control's tool tip; an empty text takes it away. Only on a loaded form.
    void Set(const Control& control, const std::wstring& text);
    /// Sets the tool tip of a part of a control, numbered from 1 on, at its place in the control in pixels.
    void SetPart(const Control& control, int part, const RECT& place, const std::wstring& text);
    std::wstring Text(const Control& control) const;

  private:
    /// A control's number and that of its part; 0 is the whole control.
    using Key = std::pair<int, int>;

    void Register(const Key& key, TTTOOLINFOW onControl, RECT place);
    LRESULT Tell(const Key& key, NMHDR& header);

    Form& form_;
    UniqueWindow window_;
    std::map<Key, std::wstring> texts_;
};

} // namespace ui
