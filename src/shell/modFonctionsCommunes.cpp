#include "shell/modFonctionsCommunes.h"

#include "platform/Drives.h"
#include "platform/Locale.h"
#include "platform/Text.h"
#include "shell/ErrorReport.h"

namespace modFonctionsCommunes {

std::vector<std::wstring> GetDriveListByType(Application& app, std::int32_t type) {
    std::vector<std::wstring> letters{L""};
    Guarded(app, L"GetDriveListByType, module modFonctionsCommunes", [&] {
        const bool areFloppiesLeftOut = type == RemovableButFloppies;
        const auto wanted = areFloppiesLeftOut ? DriveType::Removable : static_cast<DriveType>(type);
        for (const std::wstring& root : app.machine.drives->Roots()) {
            const std::wstring letter = UpperCase(root.substr(0, 1));
            if (app.machine.drives->Type(root) != wanted) continue;
            if (areFloppiesLeftOut && (letter == L"A" || letter == L"B")) continue;
            if (!letters.back().empty()) letters.emplace_back();
            letters.back() = letter;
        }
    });
    return letters;
}

std::wstring pgRecupererLangueWindows(Application& app) {
    return Guarded(app, L"pgRecupererLangueWindows, module modFonctionsCommunes",
                   [&] { return app.machine.locale->LanguageName(); });
}

} // namespace modFonctionsCommunes
