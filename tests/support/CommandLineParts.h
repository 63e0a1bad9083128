#pragma once

#include <string>
#include <vector>

/// A command line as the archiver takes it apart: blanks separate, double quotes hold together and are dropped.
inline std::vector<std::wstring> PartsOf(const std::wstring& commandLine) {
    std::vector<std::wstring> parts;
    bool isQuoted = false;
    bool isInPart = false;
    for (const wchar_t character : commandLine) {
        if (character == L' ' && !isQuoted) {
            isInPart = false;
            continue;
        }
        if (!isInPart) parts.emplace_back();
        isInPart = true;
        if (character == L'"')
            isQuoted = !isQuoted;
        else
            parts.back() += character;
    }
    return parts;
}
