#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

struct OsVersion {
    std::uint32_t platform = 0; ///< 2 is the NT family
    std::uint32_t major = 0;
    std::uint32_t minor = 0;

    /// Windows NT version 6 (Vista) or later.
    bool IsVistaOrLater() const { return platform == 2 && major >= 6; }
};

/// A moment of the user's wall clock.
struct LocalTime {
    int year = 0;
    int month = 0; ///< 1 to 12
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// Holds something off for as long as it lives.
class Hold {
  public:
    Hold() = default;
    virtual ~Hold() = default;
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
};

/// The workstation: version, user, settings and clock.
class System {
  public:
    virtual ~System() = default;
    virtual OsVersion Version() const = 0;
    /// The variable's value; nothing when it is not set.
    virtual std::optional<std::wstring> Environment(const std::wstring& name) const = 0;
    /// The native name of the user's default language, such as "français"; empty on failure.
    virtual std::wstring UserLanguageName() const = 0;
    /// The user's decimal separator, such as "," or ".".
    virtual std::wstring DecimalSeparator() const = 0;
    /// The name of a month (1 to 12) cut to its usual abbreviation, in the user's language.
    virtual std::wstring AbbreviatedMonth(int month) const = 0;
    /// A value of a private profile file, cut to 254 characters; empty when missing.
    virtual std::wstring ProfileString(const std::wstring& file, const std::wstring& section,
                                       const std::wstring& key) const = 0;
    /// The user's profile folder without a trailing backslash; empty on failure.
    virtual std::wstring ProfileFolder() const = 0;
    /// The Windows account name; empty on failure.
    virtual std::wstring AccountName() const = 0;
    /// The folder of the running program, without a trailing backslash unless it is a root.
    virtual std::wstring ProgramFolder() const = 0;
    virtual LocalTime Now() const = 0;
    /// Seconds since midnight, with fractions.
    virtual double SecondsSinceMidnight() const = 0;
    /// Gives up the processor for a moment.
    virtual void Sleep(std::uint32_t milliseconds) = 0;
    /// Keeps the computer from going to sleep until the hold is gone. Owned by the caller.
    virtual std::unique_ptr<Hold> KeepAwake() = 0;
};
