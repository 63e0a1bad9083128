#include "check/TargetNames.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr std::wstring_view Separators = L"/\\";
constexpr std::wstring_view Unfit = L"<>:\"|?*/\\";
constexpr std::array<std::wstring_view, 7> Devices = {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$", L"CLOCK$"};
constexpr std::wstring_view PortNumbers = L"0123456789\u00B9\u00B2\u00B3";
constexpr std::size_t LongestName = 240;

bool IsDevice(std::wstring_view name) {
    std::wstring stem = UpperCase(name.substr(0, name.find_first_of(L".:")));
    stem.erase(stem.find_last_not_of(L' ') + 1);
    if (std::find(Devices.begin(), Devices.end(), stem) != Devices.end()) return true;
    return stem.size() == 4 && (stem.starts_with(L"COM") || stem.starts_with(L"LPT")) &&
           PortNumbers.find(stem[3]) != std::wstring_view::npos;
}

bool IsDrive(std::wstring_view path) {
    const auto letter = path.empty() ? L'\0' : path[0];
    return path.size() >= 2 && path[1] == L':' &&
           ((letter >= L'A' && letter <= L'Z') || (letter >= L'a' && letter <= L'z'));
}

} // namespace

std::optional<std::wstring> SafeName(std::wstring_view name) {
    if (name.find_first_not_of(L". ") == std::wstring_view::npos) {
        // "..", but also "...", which old systems took for the folder above that one.
        return name.size() > 1 ? std::optional<std::wstring>() : std::wstring();
    }
    std::wstring safe(name.substr(0, LongestName));
    for (wchar_t& letter : safe) {
        if (static_cast<std::uint32_t>(letter) < 32 || Unfit.find(letter) != std::wstring_view::npos) letter = L'_';
    }
    if (safe.back() == L'.' || safe.back() == L' ') safe.back() = L'_';
    return IsDevice(name) ? L"_" + safe : safe;
}

std::optional<std::wstring> SafePath(std::wstring_view path) {
    if (IsDrive(path)) path.remove_prefix(2);
    std::wstring safe;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of(Separators), path.size());
        const auto name = SafeName(path.substr(0, end));
        if (!name) return std::nullopt;
        if (!name->empty()) safe += (safe.empty() ? L"" : L"\\") + *name;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return safe;
}

std::optional<std::wstring> PlaceOfFolder(std::wstring_view path) {
    const bool isShare = path.starts_with(L"\\\\");
    if (!IsDrive(path) && !isShare) return std::nullopt;
    auto below = SafePath(path);
    if (!below) return std::nullopt;
    if (isShare) return below;
    const std::wstring drive = UpperCase(path.substr(0, 1));
    return below->empty() ? drive : drive + L"\\" + *below;
}

std::wstring Numbered(const std::wstring& path, int number) {
    const std::size_t nameAt = path.find_last_of(L'\\') + 1;
    const std::size_t dot = path.find_last_of(L'.');
    const std::size_t at = dot == std::wstring::npos || dot <= nameAt ? path.size() : dot;
    return path.substr(0, at) + L" (" + std::to_wstring(number) + L")" + path.substr(at);
}
