#include "shell/LanguageChoice.h"

#include "core/LanguageValues.h"
#include "core/Languages.h"
#include "core/LongConversion.h"
#include "core/StartUpValues.h"
#include "platform/Locale.h"
#include "platform/SettingsFiles.h"
#include "shell/ErrorReport.h"
#include "shell/modFonctionsCommunes.h"

#include <algorithm>

namespace {

/// The language that Windows or the settings file asks for: by its name, or by its code in that file.
const LanguageDescription& LanguageAskedFor(const std::wstring& value, std::int32_t code) {
    const auto* const found =
        std::find_if(Languages.begin(), Languages.end(), [&](const LanguageDescription& language) {
            return (language.windowsName != nullptr && value == language.windowsName) || language.settingsCode == code;
        });
    return found != Languages.end() ? *found : Languages.back();
}

} // namespace

std::wstring LireINI(const Application& app, const std::wstring& fichier, const std::wstring& section,
                     const std::wstring& cle) {
    return app.machine.settings->Value(fichier, section, cle);
}

void ChooseLanguage(Application& app) {
    std::wstring value =
        LireINI(app, app.startUp->strRepRacine + L"\\Accueil\\accueil.ini", L"ACCUEIL-DEFAULTS", L"Lang");
    if (value.empty()) {
        app.language->blnLangueWindows = true;
        value = modFonctionsCommunes::pgRecupererLangueWindows(app);
    } else {
        app.language->lngLangue = ToLong(value, app.machine.locale->DecimalSeparator());
    }
    app.language->lngLangue = LanguageAskedFor(value, app.language->lngLangue).textOffset;
    PrepareMemoryReport(app);
}
