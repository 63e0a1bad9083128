#include "ui/ControlStates.h"

namespace ui {

void ControlStates::Begin(HWND form) {
    form_ = form;
    EnumChildWindows(form_, TakeHidden, reinterpret_cast<LPARAM>(this));
}

BOOL CALLBACK ControlStates::TakeHidden(HWND control, LPARAM parameter) {
    auto& states = *reinterpret_cast<ControlStates*>(parameter);
    const bool isOwn = GetParent(control) == states.form_;
    if (isOwn && (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) == 0)
        states.SetVisible(GetDlgCtrlID(control), false);
    return TRUE;
}

void ControlStates::Clear() {
    form_ = nullptr;
    wantedVisible_.clear();
    wantedEnabled_.clear();
}

void ControlStates::SetVisible(int controlId, bool isVisible) {
    if (form_ == nullptr) return;
    wantedVisible_[controlId] = isVisible;
    ApplyVisibility(controlId);
}

bool ControlStates::IsWantedVisible(int controlId) const {
    const auto wanted = wantedVisible_.find(controlId);
    if (wanted != wantedVisible_.end()) return wanted->second;
    return (GetWindowLongPtrW(GetDlgItem(form_, controlId), GWL_STYLE) & WS_VISIBLE) != 0;
}

void ControlStates::SetEnabled(int controlId, bool isEnabled) {
    if (form_ == nullptr) return;
    wantedEnabled_[controlId] = isEnabled;
    ApplyEnabled(controlId, IsShown(controlId));
}

bool ControlStates::IsWantedEnabled(int controlId) const {
    if (form_ == nullptr) return false;
    const auto wanted = wantedEnabled_.find(controlId);
    return wanted != wantedEnabled_.end() ? wanted->second : IsWindowEnabled(GetDlgItem(form_, controlId)) != FALSE;
}

void ControlStates::SetFrame(int frameId, const std::vector<int>& controlIds) {
    for (const int controlId : controlIds) {
        wantedVisible_.try_emplace(controlId, IsWantedVisible(controlId));
        frameOf_[controlId] = frameId;
        ApplyVisibility(controlId);
    }
}

bool ControlStates::IsShown(int controlId) const {
    bool isShown = IsWantedVisible(controlId);
    for (auto frame = frameOf_.find(controlId); isShown && frame != frameOf_.end();
         frame = frameOf_.find(frame->second)) {
        isShown = IsWantedVisible(frame->second);
    }
    return isShown;
}

void ControlStates::ApplyVisibility(int controlId) {
    const bool isShown = IsShown(controlId);
    wantedEnabled_.try_emplace(controlId, IsWantedEnabled(controlId));
    ApplyEnabled(controlId, isShown);
    ShowWindow(GetDlgItem(form_, controlId), isShown ? SW_SHOWNA : SW_HIDE);
    for (const auto& [heldId, frameId] : frameOf_) {
        if (frameId == controlId) ApplyVisibility(heldId);
    }
}

void ControlStates::ApplyEnabled(int controlId, bool isShown) {
    HWND control = GetDlgItem(form_, controlId);
    if (control == nullptr) return;
    const bool isEnabled = isShown && IsWantedEnabled(controlId);
    // A disabled window that keeps the focus swallows the keyboard.
    if (!isEnabled && GetFocus() == control) SendMessageW(form_, WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(control, isEnabled);
}

} // namespace ui
