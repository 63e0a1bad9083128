#pragma once

#include "platform/Processes.h"

#include <deque>
#include <functional>
#include <vector>

/// Records what would be run; each run may have an effect and a scripted exit code.
class FakeProcesses : public Processes {
  public:
    struct Opening {
        std::wstring document;
        std::wstring workingFolder;
    };

    std::vector<std::wstring> commandLines; ///< of Run, in order
    std::vector<std::wstring> started;
    std::vector<Opening> opened;

    /// What the next runs return, first one first; 0 when none is left.
    std::deque<std::int32_t> exitCodes;
    /// Called with the command line while it "runs", before its exit code is taken.
    std::function<void(const std::wstring& commandLine)> effect;
    bool canStart = true;

    std::int32_t Run(const std::wstring& commandLine) override;
    void Start(const std::wstring& commandLine) override;
    void Open(const std::wstring& document, const std::wstring& workingFolder) override;
};
