#pragma once

#include "platform/Power.h"
#include "support/CountedHold.h"

class FakePower : public Power {
  public:
    int awakeHolds = 0;      ///< alive now
    int awakeHoldsTaken = 0; ///< ever

    std::unique_ptr<Hold> KeepAwake() override {
        ++awakeHoldsTaken;
        return std::make_unique<CountedHold>(awakeHolds);
    }
};
