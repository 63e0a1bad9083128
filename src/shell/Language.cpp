#include "shell/Language.h"

#include "core/LanguageValues.h"
#include "core/LongConversion.h"
#include "core/StartUpValues.h"
#include "platform/Locale.h"
#include "platform/SettingsFiles.h"
#include "shell/modFonctionsCommunes.h"

namespace {

constexpr std::int32_t French = 0;
constexpr std::int32_t English = 10000;
/// The only code by which the settings file asks for French.
constexpr std::int32_t FrenchCode = 20001;

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
    app.language->lngLangue = value == L"français" || app.language->lngLangue == FrenchCode ? French : English;
}
