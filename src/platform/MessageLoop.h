#pragma once

enum class Pointer { Default, Hourglass };

/// The user-interface thread's messages and the mouse pointer.
class MessageLoop {
  public:
    virtual ~MessageLoop() = default;
    /// Handles every message that is pending, then returns. Any handler may run meanwhile.
    virtual void RunPending() = 0;
    /// Paints what waits to be painted and runs no other handler; nothing to do where there are no windows.
    virtual void Paint() {}
    virtual void SetPointer(Pointer pointer) = 0;
};
