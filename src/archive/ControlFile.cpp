#include "archive/ControlFile.h"

#include "core/SequentialInput.h"
#include "core/UserProfileMarker.h"

#include <algorithm>

namespace {

bool HasThreeFields(std::string_view bytes) {
    const std::wstring firstLine = SequentialInput(bytes).Line();
    return std::count(firstLine.begin(), firstLine.end(), L',') == 2;
}

std::wstring RestorePathOf(std::wstring path) {
    if (path.find(L".pst") == std::wstring::npos) return path;
    return MailStoreFolder + path.substr(path.find_last_of(L'\\') + 1);
}

} // namespace

void ReadControlFile(std::string_view bytes, const std::wstring& profileFolder,
                     std::vector<ControlFileRecord>& records) {
    const bool hasThreeFields = HasThreeFields(bytes);
    SequentialInput input(bytes);
    while (!input.IsAtEnd()) {
        const std::wstring path = input.Field();
        std::wstring kind = input.Field();
        const std::wstring innerArchive = hasThreeFields ? input.Field() : path;
        if (path.empty()) continue;
        records.push_back({RestorePathOf(WithUserProfile(path, profileFolder)), std::move(kind),
                           WithUserProfile(innerArchive, profileFolder)});
    }
}
