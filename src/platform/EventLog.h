#pragma once

#include <string>

/// The application event log.
class EventLog {
  public:
    virtual ~EventLog() = default;
    /// Writes one entry of type error under the source "Backup"; a log that cannot be reached is no failure.
    virtual void WriteError(const std::wstring& message) = 0;
};
