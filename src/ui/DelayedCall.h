#pragma once

#include "ui/Timer.h"

#include <functional>

namespace ui {

/// Runs something a moment later on the user-interface thread, once for however many requests came meanwhile. Dropped
/// with the form's window.
class DelayedCall {
  public:
    /// What `steps` let through is handed to the form.
    DelayedCall(Form& form, std::function<void()> steps)
        : timer_(form, [this, steps = std::move(steps)] {
              timer_.Stop();
              steps();
          }) {}

    /// Asks for the call in `milliseconds`; a call that is due already stays where it is. Only on a loaded form.
    void Request(UINT milliseconds) {
        if (!timer_.IsRunning()) timer_.Start(milliseconds);
    }
    void Cancel() { timer_.Stop(); }

  private:
    Timer timer_;
};

} // namespace ui
