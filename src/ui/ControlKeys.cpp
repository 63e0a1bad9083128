#include "ui/ControlKeys.h"

#include <utility>

namespace ui {

void ControlKeys::On(WPARAM key, std::function<void()> handler) {
    handlers_[key] = std::move(handler);
    subclass_.Attach(form_.ControlHandle(controlId_),
                     [this](const WindowMessage& message) { return TakeKeys(message); });
}

LRESULT ControlKeys::TakeKeys(const WindowMessage& message) {
    if (message.id == WM_GETDLGCODE) {
        const auto* asked = reinterpret_cast<const MSG*>(message.lParam);
        const bool isTaken = asked != nullptr && asked->message == WM_KEYDOWN && handlers_.contains(asked->wParam);
        return message.PassOn() | (isTaken ? DLGC_WANTMESSAGE : 0);
    }
    if (message.id == WM_KEYDOWN) {
        if (const auto handler = handlers_.find(message.wParam); handler != handlers_.end()) {
            // As a task of the form, so that nothing thrown leaves this procedure; the task itself may find no memory.
            form_.RunGuarded([this, &steps = handler->second] {
                form_.Post([this, steps] {
                    if (form_.TakesInput()) steps();
                });
            });
            return 0;
        }
    }
    return message.PassOn();
}

} // namespace ui
