#pragma once

#include "platform/OperatingSystem.h"

class WindowsOperatingSystem : public OperatingSystem {
  public:
    OsVersion Version() const override;
};
