#pragma once

#include "platform/Locale.h"

class WindowsLocale : public Locale {
  public:
    std::wstring LanguageName() const override;
    std::wstring DecimalSeparator() const override;
    std::wstring AbbreviatedMonth(int month) const override;
};
