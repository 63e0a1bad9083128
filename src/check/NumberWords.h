#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

enum class TextId : int;

/// A text in the user's language.
using Texts = std::function<std::wstring(TextId id)>;

/// `text` with %1, %2 and so on replaced.
std::wstring Filled(std::wstring text, const std::vector<std::wstring>& values);

/// How numbers look to the user.
struct NumberWords {
    Texts texts;
    std::wstring decimalSeparator;

    /// A whole number, its thousands apart.
    std::wstring Count(std::uint64_t value) const;
    /// An amount of bytes in the unit that suits it.
    std::wstring Size(std::uint64_t bytes) const;
    std::wstring Duration(double seconds) const;
};
