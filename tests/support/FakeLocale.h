#pragma once

#include "platform/Locale.h"

#include <array>

/// French, unless told otherwise.
class FakeLocale : public Locale {
  public:
    std::wstring languageName = L"français";
    std::wstring decimalSeparator = L",";
    std::array<std::wstring, 12> months = {L"janv.", L"févr.", L"mars",  L"avr.", L"mai",  L"juin",
                                           L"juil.", L"août",  L"sept.", L"oct.", L"nov.", L"déc."};

    std::wstring LanguageName() const override { return languageName; }
    std::wstring DecimalSeparator() const override { return decimalSeparator; }
    std::wstring AbbreviatedMonth(int month) const override { return months.at(static_cast<std::size_t>(month - 1)); }
};
