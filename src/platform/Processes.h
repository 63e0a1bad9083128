#pragma once

#include <cstdint>
#include <string>

/// Programs that this one runs.
class Processes {
  public:
    virtual ~Processes() = default;
    /// Runs a command line, waits without limit and returns its exit code; 0 when nothing could be started, because
    /// a failed start is not tested.
    virtual std::int32_t Run(const std::wstring& commandLine) = 0;
    /// Starts a command line in a normal window with focus and goes on. Throws 53 when it cannot be started.
    virtual void Start(const std::wstring& commandLine) = 0;
    /// Opens a document with the shell's "open" verb in a normal window; the result is ignored.
    virtual void Open(const std::wstring& document, const std::wstring& workingFolder) = 0;
};
