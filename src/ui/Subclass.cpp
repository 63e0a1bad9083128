#include "ui/Subclass.h"

#include <utility>

namespace ui {

void Subclass::Attach(HWND window, Steps steps) {
    Detach();
    auto shared = std::make_shared<const Steps>(std::move(steps));
    // Its own address tells it from the others that stand before the same window.
    if (!SetWindowSubclass(window, Procedure, reinterpret_cast<UINT_PTR>(this), reinterpret_cast<DWORD_PTR>(this)))
        return;
    window_ = window;
    steps_ = std::move(shared);
}

void Subclass::Detach() {
    if (window_ != nullptr) RemoveWindowSubclass(window_, Procedure, reinterpret_cast<UINT_PTR>(this));
    window_ = nullptr;
    steps_.reset();
}

LRESULT CALLBACK Subclass::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                     DWORD_PTR reference) {
    auto* subclass = reinterpret_cast<Subclass*>(reference);
    // The steps may end in the owner's destruction, and still have to come to their own end.
    const auto steps = subclass->steps_;
    // The window's last message: its number may soon be another window's.
    if (message == WM_NCDESTROY) subclass->Detach();
    return (*steps)({window, message, wParam, lParam});
}

} // namespace ui
