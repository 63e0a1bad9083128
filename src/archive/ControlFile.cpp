#include "archive/ControlFile.h"

#include "core/SequentialInput.h"
#include "core/TextDecoding.h"
#include "core/UserProfileMarker.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t FieldCount = 3;
constexpr std::size_t OlderFieldCount = 2;

std::size_t FieldCountOf(const std::wstring& firstLine) {
    return std::count(firstLine.begin(), firstLine.end(), L',') == FieldCount - 1 ? FieldCount : OlderFieldCount;
}

std::wstring RestorePathOf(std::wstring path) {
    if (path.find(L".pst") == std::wstring::npos) return path;
    return MailStoreFolder + path.substr(path.find_last_of(L'\\') + 1);
}

constexpr std::wstring_view AllOfFolder = L"\\*.*";
constexpr std::wstring_view NotInNames = L"\"*?<>|/:";
constexpr std::wstring_view Digits = L"0123456789";

/// Drive or share, without which a path means a place that depends on the moment; 0 characters for anything else.
std::size_t RootLength(std::wstring_view path) {
    const bool hasLetter =
        !path.empty() && ((path[0] >= L'A' && path[0] <= L'Z') || (path[0] >= L'a' && path[0] <= L'z'));
    if (hasLetter && path.substr(1).starts_with(L":\\")) return 3;
    return path.starts_with(L"\\\\") ? 2 : 0;
}

/// "..", and what the system takes for it or for nothing at all.
bool LeadsElsewhere(std::wstring_view piece) {
    return !piece.empty() && piece.find_first_not_of(L". ") == std::wstring_view::npos;
}

/// Whether the archiver, on whose command line an inner archive's name stands bare, would take a word of it for a
/// switch or for a file of names.
bool HoldsSwitch(std::wstring_view name) {
    return name.find(L" -") != std::wstring_view::npos || name.find(L" @") != std::wstring_view::npos;
}

bool IsPathOfAnItem(std::wstring_view path) {
    const std::size_t rootLength = RootLength(path);
    if (rootLength == 0) return false;
    path.remove_prefix(rootLength);
    const bool isControlCharacterThere = std::any_of(path.begin(), path.end(), [](wchar_t c) { return c < L' '; });
    if (isControlCharacterThere || path.find_first_of(NotInNames) != std::wstring_view::npos) return false;
    for (;;) {
        const std::size_t end = std::min(path.find(L'\\'), path.size());
        if (LeadsElsewhere(path.substr(0, end))) return false;
        if (end == path.size()) return true;
        path.remove_prefix(end + 1);
    }
}

} // namespace

bool CouldBeWritten(const std::wstring& path, const std::wstring& innerArchive) {
    const std::wstring_view name = innerArchive;
    const bool isNumbered =
        name.starts_with(L"Zip") && name.size() > 3 && name.find_first_not_of(Digits, 3) == std::wstring_view::npos;
    const bool isOwnPath = innerArchive == path && !HoldsSwitch(name);
    return (isNumbered || isOwnPath) && IsPathOfAnItem(ReplaceAll(path, AllOfFolder, L""));
}

void ReadControlFile(std::string_view bytes, const std::wstring& profileFolder,
                     std::vector<ControlFileRecord>& records) {
    ControlFileReader reader(profileFolder);
    reader.Read(DecodeText(bytes), records);
    reader.Finish();
}

void ControlFileReader::Read(std::wstring text, std::vector<ControlFileRecord>& records) {
    SequentialInput input(std::move(text));
    while (!input.IsAtEnd()) {
        std::wstring line = input.Line();
        if (!fieldCount_) fieldCount_ = FieldCountOf(line);
        std::vector<std::wstring> fields = FieldsOfLine(std::move(line));
        if (fields.front().empty()) continue;
        isAnyFieldMissing_ = isAnyFieldMissing_ || fields.size() < *fieldCount_;
        fields.resize(FieldCount);
        const std::wstring path = WithUserProfile(fields[0], profileFolder_);
        const std::wstring inner = *fieldCount_ == FieldCount ? WithUserProfile(fields[2], profileFolder_) : path;
        records.push_back({RestorePathOf(path), std::move(fields[1]), inner, CouldBeWritten(path, inner)});
    }
}

void ControlFileReader::Finish() const {
    if (isAnyFieldMissing_) throw RuntimeError(ErrorNumber::InputPastEndOfFile);
}
