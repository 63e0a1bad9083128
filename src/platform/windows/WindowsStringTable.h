#pragma once

#include "platform/StringTable.h"

/// The texts in the running program's own resources.
class WindowsStringTable : public StringTable {
  public:
    std::wstring Load(int id) const override;
};
