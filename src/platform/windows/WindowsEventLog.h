#pragma once

#include "platform/EventLog.h"

class WindowsEventLog : public EventLog {
  public:
    void WriteError(const std::wstring& message) override;
};
