#pragma once

#include <optional>
#include <string>

/// What the program was started with.
class Environment {
  public:
    virtual ~Environment() = default;
    /// The variable's value, whatever the case of its name; nothing when it is not set.
    virtual std::optional<std::wstring> Variable(const std::wstring& name) const = 0;
    /// The folder of the running program, without a trailing backslash unless it is a root.
    virtual std::wstring ProgramFolder() const = 0;
};
