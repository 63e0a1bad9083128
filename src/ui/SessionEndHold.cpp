#include "ui/SessionEndHold.h"

namespace ui {

SessionEndHold::SessionEndHold(Form& form, const std::wstring& reason) : form_(form), window_(form.Handle()) {
    ++form_.sessionEndHolds_;
    // Of several reasons for one window Windows shows the first.
    ShutdownBlockReasonCreate(window_, reason.c_str());
}

SessionEndHold::~SessionEndHold() {
    if (--form_.sessionEndHolds_ == 0 && window_ == form_.Handle()) ShutdownBlockReasonDestroy(window_);
}

} // namespace ui
