#pragma once

#include "platform/Console.h"
#include "win32/UniqueHandle.h"

/// The console of a program that has a window of its own: it is attached to the one that it was started on, unless its
/// output goes to a file or a pipe.
class WindowsConsole final : public Console {
  public:
    WindowsConsole();
    void Line(const std::wstring& text) override;
    std::string Input() override;
    bool IsStopAsked() const override;

  private:
    UniqueFile attached_;
    HANDLE output_ = nullptr; ///< borrowed; null where there is none
    bool isOutputConsole_ = false;
};
