#include "archive/ControlFile.h"

#include "core/SequentialInput.h"
#include "core/TextDecoding.h"
#include "core/UserProfileMarker.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <optional>
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

} // namespace

void ReadControlFile(std::string_view bytes, const std::wstring& profileFolder,
                     std::vector<ControlFileRecord>& records) {
    SequentialInput input(DecodeText(bytes));
    std::optional<std::size_t> fieldCount;
    bool isAnyFieldMissing = false;
    while (!input.IsAtEnd()) {
        std::wstring line = input.Line();
        if (!fieldCount) fieldCount = FieldCountOf(line);
        std::vector<std::wstring> fields = FieldsOfLine(std::move(line));
        const std::wstring path = fields.front();
        if (path.empty()) continue;
        isAnyFieldMissing = isAnyFieldMissing || fields.size() < *fieldCount;
        fields.resize(FieldCount);
        const std::wstring& innerArchive = *fieldCount == FieldCount ? fields[2] : path;
        records.push_back({RestorePathOf(WithUserProfile(path, profileFolder)), std::move(fields[1]),
                           WithUserProfile(innerArchive, profileFolder)});
    }
    if (isAnyFieldMissing) throw RuntimeError(ErrorNumber::InputPastEndOfFile);
}
