#pragma once

#include <string>

/// How the user's Windows writes.
class Locale {
  public:
    virtual ~Locale() = default;
    /// The native name of the user's default language, such as "français"; empty on failure.
    virtual std::wstring LanguageName() const = 0;
    /// The user's decimal separator, such as "," or ".".
    virtual std::wstring DecimalSeparator() const = 0;
    /// The name of a month (1 to 12) cut to its usual abbreviation, in the user's language.
    virtual std::wstring AbbreviatedMonth(int month) const = 0;
};
