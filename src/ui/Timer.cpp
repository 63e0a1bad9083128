#include "ui/Timer.h"

namespace ui {

void Timer::Start(UINT milliseconds) {
    Stop();
    if (!form_.IsLoaded()) return;
    if (SetTimer(form_.Handle(), reinterpret_cast<UINT_PTR>(this), milliseconds, Run) != 0) window_ = form_.Handle();
}

void Timer::Stop() {
    if (IsRunning()) KillTimer(window_, reinterpret_cast<UINT_PTR>(this));
    window_ = nullptr;
}

void CALLBACK Timer::Run(HWND, UINT, UINT_PTR timer, DWORD) {
    const auto* self = reinterpret_cast<const Timer*>(timer);
    self->form_.RunGuarded(self->steps_);
}

} // namespace ui
