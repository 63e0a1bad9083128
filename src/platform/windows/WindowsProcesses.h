#pragma once

#include "platform/Processes.h"

class WindowsProcesses : public Processes {
  public:
    std::int32_t Run(const std::wstring& commandLine) override;
    void Start(const std::wstring& commandLine) override;
    /// The calling thread must have initialised COM, which shell extensions may need.
    void Open(const std::wstring& document, const std::wstring& workingFolder) override;
};
