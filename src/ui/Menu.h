#pragma once

#include "ui/Form.h"

#include <string>
#include <vector>

namespace ui {

struct MenuCommand {
    int id; ///< comes to the form as a click of this number
    std::wstring caption;
};

/// Appends a menu to the form's menu bar; the window grows by the bar's height when this is its first. The window owns
/// the menu. Only on a loaded form.
void AddMenu(Form& form, const std::wstring& caption, const std::vector<MenuCommand>& commands);

} // namespace ui
