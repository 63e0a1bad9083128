#pragma once

#include "platform/Power.h"

class WindowsPower : public Power {
  public:
    std::unique_ptr<Hold> KeepAwake() override;
};
