#pragma once

#include "ui/Windows.h"

#include <unordered_map>
#include <vector>

namespace ui {

/// Which controls of a form are to be seen and which can be used. A control shows when it is wanted visible and so is
/// the frame that holds it. While it is hidden its window is disabled, whatever is wanted of it: Windows keeps the
/// access keys of a control that is merely hidden alive.
class ControlStates {
  public:
    ControlStates() = default;
    ControlStates(const ControlStates&) = delete;
    ControlStates& operator=(const ControlStates&) = delete;

    /// Begins with what the template of `form`, which is borrowed, says of each control.
    void Begin(HWND form);
    /// The form goes. Without one everything is without effect.
    void Clear();

    void SetVisible(int controlId, bool isVisible);
    bool IsWantedVisible(int controlId) const;
    /// A control that has the focus passes it on before it is disabled.
    void SetEnabled(int controlId, bool isEnabled);
    /// False on a form that is not loaded.
    bool IsWantedEnabled(int controlId) const;
    void SetFrame(int frameId, const std::vector<int>& controlIds);

  private:
    static BOOL CALLBACK TakeHidden(HWND control, LPARAM states);
    bool IsShown(int controlId) const;
    void ApplyVisibility(int controlId);
    void ApplyEnabled(int controlId, bool isShown);

    HWND form_ = nullptr;
    std::unordered_map<int, bool> wantedVisible_;
    std::unordered_map<int, bool> wantedEnabled_;
    std::unordered_map<int, int> frameOf_;
};

} // namespace ui
