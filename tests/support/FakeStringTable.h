#pragma once

#include "platform/StringTable.h"

#include <vector>

/// The program's texts, read from their source instead of from resources.
class FakeStringTable : public StringTable {
  public:
    struct Row {
        int id;
        const wchar_t* french;
        const wchar_t* english;
    };
    static const std::vector<Row>& Rows();

    /// Memory runs out when this text is loaded; 0 is none.
    int outOfMemoryAt = 0;

    std::wstring Load(int id) const override;
};
