#pragma once

#include <string>

/// Who uses the workstation.
class UserAccount {
  public:
    virtual ~UserAccount() = default;
    /// The Windows account name; empty on failure.
    virtual std::wstring Name() const = 0;
    /// The user's profile folder without a trailing backslash; empty on failure.
    virtual std::wstring ProfileFolder() const = 0;
};
