#include "core/CommandWords.h"

std::vector<std::wstring> CommandWords(const std::wstring& commandLine) {
    std::vector<std::wstring> words;
    bool isQuoted = false;
    bool isInWord = false;
    for (const wchar_t letter : commandLine) {
        const bool isBlank = !isQuoted && (letter == L' ' || letter == L'\t');
        if (!isBlank && !isInWord) words.emplace_back();
        isInWord = !isBlank;
        if (letter == L'"') {
            isQuoted = !isQuoted;
        } else if (!isBlank) {
            words.back() += letter;
        }
    }
    return words;
}
