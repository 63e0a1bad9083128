#pragma once

#include "platform/Power.h"

/// Keeps the computer from going to sleep. It belongs to the thread that made it and must end on it.
class AwakeHold final : public Hold {
  public:
    AwakeHold();
    ~AwakeHold() override;
};
