#pragma once

#include <memory>

/// Holds something off for as long as it lives.
class Hold {
  public:
    Hold() = default;
    virtual ~Hold() = default;
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
};

/// The workstation's way to sleep.
class Power {
  public:
    virtual ~Power() = default;
    /// Keeps the computer from going to sleep until the hold is gone. Owned by the caller; it belongs to the calling
    /// thread, which takes no second one meanwhile, and must end on it.
    virtual std::unique_ptr<Hold> KeepAwake() = 0;
};
