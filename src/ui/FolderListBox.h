#pragma once

#include "ui/ControlKeys.h"
#include "ui/Controls.h"
#include "ui/Subclass.h"
#include "win32/UniqueHandle.h"

#include <functional>
#include <string>
#include <vector>

namespace ui {

/// A line of a folder list.
struct FolderLine {
    std::wstring name;
    int level = 0;       ///< how far it is indented
    bool isOpen = false; ///< drawn as an open folder
};

/// A list of folders with their icons, indented by level. One click opens a line, and so do Enter and the space bar;
/// the arrow keys only move the selection. The control must be LBS_OWNERDRAWFIXED with LBS_HASSTRINGS.
class FolderListBox : public ListBox {
  public:
    FolderListBox(Form& form, int id);

    /// Connects the control; only on a loaded form.
    void Attach();
    /// Replaces all lines and selects one.
    void SetLines(std::vector<FolderLine> lines, int selected);
    void OnOpen(const std::function<void()>& handler);

  private:
    void Draw(const DRAWITEMSTRUCT& item) const;
    LRESULT HandleListMessage(const WindowMessage& message);
    LRESULT HandleFormMessage(const WindowMessage& message) const;

    std::vector<FolderLine> lines_;
    ControlKeys keys_;
    UniqueIcon closedIcon_;
    UniqueIcon openIcon_;
    bool isMovedByKey_ = false;
    Subclass listSubclass_;
    Subclass formSubclass_;
};

} // namespace ui
