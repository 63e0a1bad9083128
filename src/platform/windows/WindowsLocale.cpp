#include "platform/windows/WindowsLocale.h"

#include <windows.h>

namespace {

// LOCALE_SNATIVELANGNAME: the name of the language in the language itself.
constexpr LCTYPE NativeLanguageName = 4;

std::wstring LocaleText(LCTYPE type) {
    // The longest text of these two kinds takes 80 characters, its end included.
    wchar_t text[80] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 80);
    return text;
}

} // namespace

std::wstring WindowsLocale::LanguageName() const {
    return LocaleText(NativeLanguageName);
}

std::wstring WindowsLocale::DecimalSeparator() const {
    return LocaleText(LOCALE_SDECIMAL);
}

std::wstring WindowsLocale::AbbreviatedMonth(int month) const {
    return LocaleText(LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month - 1));
}
