#include "ui/DelayedCall.h"

namespace ui {

void DelayedCall::Request(UINT milliseconds) {
    if (!form_.IsLoaded() || window_ == form_.Handle()) return;
    if (SetTimer(form_.Handle(), reinterpret_cast<UINT_PTR>(this), milliseconds, Run) != 0) window_ = form_.Handle();
}

void DelayedCall::Cancel() {
    if (window_ != nullptr && window_ == form_.Handle()) KillTimer(window_, reinterpret_cast<UINT_PTR>(this));
    window_ = nullptr;
}

void CALLBACK DelayedCall::Run(HWND, UINT, UINT_PTR timer, DWORD) {
    auto* call = reinterpret_cast<DelayedCall*>(timer);
    call->Cancel();
    call->form_.RunGuarded(call->steps_);
}

} // namespace ui
