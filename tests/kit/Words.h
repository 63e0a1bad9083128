#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace kit {

/// What a person reads, in both languages.
struct Words {
    const wchar_t* french;
    const wchar_t* english;
};

/// Whether the person's Windows speaks French.
inline bool IsFrench() {
    return PRIMARYLANGID(LANGIDFROMLCID(GetUserDefaultLCID())) == LANG_FRENCH;
}

inline std::wstring Say(const Words& words) {
    return IsFrench() ? words.french : words.english;
}

/// What went otherwise than expected, in words for the report.
class Failure : public std::runtime_error {
  public:
    explicit Failure(std::wstring said) : std::runtime_error("kit failure"), said_(std::move(said)) {}
    const std::wstring& Said() const { return said_; }

  private:
    std::wstring said_;
};

/// A thing that cannot be shown here, for the reason that it says.
class NotHere : public Failure {
  public:
    using Failure::Failure;
};

} // namespace kit
