#pragma once

#include <string>

/// The program's own texts by number.
class StringTable {
  public:
    virtual ~StringTable() = default;
    /// The text of resource `id`; empty when there is none.
    virtual std::wstring Load(int id) const = 0;
};
