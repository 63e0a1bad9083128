#pragma once

#include "platform/MessageLoop.h"

#include <functional>
#include <vector>

class FakeMessageLoop : public MessageLoop {
  public:
    int runs = 0;
    int paintings = 0;
    std::vector<Pointer> pointers; ///< every pointer that was set, in order
    /// What the pending messages do, at every run.
    std::function<void()> handler;

    void RunPending() override {
        ++runs;
        if (handler) handler();
    }
    void Paint() override { ++paintings; }
    void SetPointer(Pointer pointer) override { pointers.push_back(pointer); }
};
