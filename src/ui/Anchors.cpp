#include "ui/Anchors.h"

namespace ui {

namespace {

SIZE InnerSize(HWND window) {
    RECT inner{};
    GetClientRect(window, &inner);
    return {inner.right, inner.bottom};
}

SIZE OuterSize(HWND window) {
    RECT outer{};
    GetWindowRect(window, &outer);
    return {outer.right - outer.left, outer.bottom - outer.top};
}

RECT PlaceIn(HWND form, HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

} // namespace

void Anchors::Take(const std::vector<Anchor>& anchors) {
    window_ = form_.Handle();
    inner_ = InnerSize(window_);
    outer_ = OuterSize(window_);
    held_.clear();
    for (const Anchor& anchor : anchors)
        held_.push_back({anchor, PlaceIn(window_, form_.ControlHandle(anchor.controlId))});
}

void Anchors::Apply() const {
    if (window_ == nullptr || window_ != form_.Handle() || IsIconic(window_)) return;
    const SIZE inner = InnerSize(window_);
    const LONG wider = inner.cx - inner_.cx;
    const LONG taller = inner.cy - inner_.cy;
    for (const Held& held : held_) {
        const RECT& was = held.place;
        const LONG left = was.left + (held.anchor.left ? 0 : wider);
        const LONG top = was.top + (held.anchor.top ? 0 : taller);
        const LONG right = was.right + (held.anchor.right ? wider : 0);
        const LONG bottom = was.bottom + (held.anchor.bottom ? taller : 0);
        SetWindowPos(form_.ControlHandle(held.anchor.controlId), nullptr, left, top, right - left, bottom - top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void Anchors::Limit(MINMAXINFO& limits) const {
    if (window_ == nullptr || window_ != form_.Handle()) return;
    limits.ptMinTrackSize = {outer_.cx, outer_.cy};
}

} // namespace ui
