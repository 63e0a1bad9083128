#include "platform/discs/DiscLabel.h"

#include <cstddef>

namespace {

constexpr std::size_t MaximumLength = 15;

/// The letters of Latin-1 from U+00C0 on without their accents; a blank where there is no base letter.
constexpr wchar_t BaseLetters[] = L"AAAAAAACEEEEIIIIDNOOOOO OUUUUY  aaaaaaaceeeeiiiidnooooo ouuuuy y";

wchar_t Reduced(wchar_t character) {
    if (character >= 0x00C0 && character <= 0x00FF) character = BaseLetters[character - 0x00C0];
    if (character == 0x0152) return L'O';
    if (character == 0x0153) return L'o';
    const bool isKept = (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z') ||
                        (character >= L'0' && character <= L'9') || character == L'.' || character == L'_';
    return isKept ? character : L' ';
}

} // namespace

std::wstring AcceptableDiscLabel(std::wstring_view label) {
    std::wstring acceptable;
    bool hasGap = false;
    for (wchar_t given : label) {
        const wchar_t character = Reduced(given);
        if (character == L' ') {
            hasGap = true;
            continue;
        }
        if (hasGap && !acceptable.empty()) acceptable += L'_';
        hasGap = false;
        acceptable += character;
    }
    if (acceptable.size() > MaximumLength) acceptable.resize(MaximumLength);
    return acceptable;
}
