#pragma once

#include "platform/OperatingSystem.h"

/// Windows 10, unless told otherwise.
class FakeOperatingSystem : public OperatingSystem {
  public:
    OsVersion version = {2, 10, 0};

    OsVersion Version() const override { return version; }
};
