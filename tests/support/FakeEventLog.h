#pragma once

#include "platform/EventLog.h"

#include <vector>

class FakeEventLog : public EventLog {
  public:
    std::vector<std::wstring> errors;

    void WriteError(const std::wstring& message) override { errors.push_back(message); }
};
