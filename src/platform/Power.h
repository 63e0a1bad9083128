#pragma once

#include "platform/Hold.h"

#include <memory>

/// The workstation's way to sleep.
class Power {
  public:
    virtual ~Power() = default;
    /// Keeps the computer from going to sleep until the hold is gone. Owned by the caller; it belongs to the calling
    /// thread, which takes no second one meanwhile, and must end on it.
    virtual std::unique_ptr<Hold> KeepAwake() = 0;
};
