#include "archive/modGestionMotPasse.h"

#include "archive/PassingSecret.h"
#include "platform/Text.h"

#include <bitset>

namespace {

constexpr std::size_t ShortestPassword = 8;
constexpr std::size_t CategoriesNeeded = 3;

enum Category : std::size_t { UpperCaseLetter, LowerCaseLetter, Digit, Symbol, CategoryCount };

bool IsFrom(unsigned char code, unsigned char first, unsigned char last) {
    return code >= first && code <= last;
}

void Mark(std::bitset<CategoryCount>& met, unsigned char code) {
    if (IsFrom(code, 'A', 'Z'))
        met.set(UpperCaseLetter);
    else if (IsFrom(code, 'a', 'z'))
        met.set(LowerCaseLetter);
    else if (IsFrom(code, '0', '9'))
        met.set(Digit);
    else if (IsFrom(code, '!', '~'))
        met.set(Symbol);
}

} // namespace

namespace modGestionMotPasse {

bool VerifierComplexiteMotPasse(const std::wstring& password, const std::wstring& accountName) {
    if (password.size() < ShortestPassword) return false;
    const PassingSecret inUpperCase(UpperCase(password));
    if (!accountName.empty() && inUpperCase.Text().find(UpperCase(accountName)) != std::wstring::npos) return false;
    std::bitset<CategoryCount> met;
    for (const wchar_t character : password) {
        // A character of two bytes has a code that is in no category.
        const std::string code = ToAnsi(std::wstring_view(&character, 1));
        if (code.size() == 1) Mark(met, static_cast<unsigned char>(code.front()));
    }
    return met.count() >= CategoriesNeeded;
}

bool MotsPasseIdentiques(std::wstring_view password, std::wstring_view confirmation) {
    return !confirmation.empty() && password == confirmation;
}

std::wstring_view WithoutBlanksAround(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

} // namespace modGestionMotPasse
