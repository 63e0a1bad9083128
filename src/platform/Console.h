#pragma once

#include <string>

/// The console that the program was started on, or what its output and input were sent to instead.
class Console {
  public:
    virtual ~Console() = default;
    /// Shows one line of text; without a console and without a file or a pipe in its place, nothing is shown. A file or
    /// a pipe gets UTF-8.
    virtual void Line(const std::wstring& text) = 0;
    /// The first line of standard input, or all of it when no line ends, as bytes in the system's ANSI code page. What
    /// is typed is not shown. Throws 62 when there is no input, and what reading meets.
    virtual std::string Input() = 0;
    /// Whether the user has asked for the end of the work: Ctrl+C, or the console closed.
    virtual bool IsStopAsked() const = 0;
};
