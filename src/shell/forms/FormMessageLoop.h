#pragma once

#include "platform/MessageLoop.h"

/// The user-interface thread's real messages and pointer.
class FormMessageLoop final : public MessageLoop {
  public:
    void RunPending() override;
    void Paint() override;
    void SetPointer(Pointer pointer) override;
};
