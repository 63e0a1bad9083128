// The two settings files as whole files: whatever stands in them, the language is one of two, and DVDs are offered on
// one word only.
#include "Require.h"

#include "core/LanguageValues.h"
#include "core/LongConversion.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "shell/LanguageChoice.h"
#include "shell/WriterDetection.h"
#include "support/FakeMachine.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

constexpr std::size_t LongestValue = 254;

std::wstring Trimmed(std::wstring text) {
    text.erase(0, text.find_first_not_of(L" \t"));
    text.resize(text.find_last_not_of(L" \t\r") + 1);
    return text;
}

std::wstring Unquoted(const std::wstring& value) {
    const bool isQuoted = value.size() > 1 && (value.front() == L'"' || value.front() == L'\'');
    return isQuoted && value.back() == value.front() ? value.substr(1, value.size() - 2) : value;
}

/// Reads a private profile file as Windows does, which does it for the program: the first line of a key counts.
void ReadProfile(FakeSettingsFiles& settings, const std::wstring& file, std::wstring_view text) {
    std::wstring section;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        const std::wstring line = Trimmed(std::wstring(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with(L'[')) section = line.substr(1, line.find(L']') - 1);
        const std::size_t sign = line.find(L'=');
        if (line.starts_with(L';') || line.starts_with(L'[') || sign == std::wstring::npos) continue;
        const std::wstring key = Trimmed(line.substr(0, sign));
        if (settings.Value(file, section, key).empty())
            settings.Set(file, section, key, Unquoted(Trimmed(line.substr(sign + 1))).substr(0, LongestValue));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    FakeMachine machine;
    const std::wstring text = FromAnsi({reinterpret_cast<const char*>(data), sizeBytes});
    const std::wstring accueil = L"C:\\Valcoreaux\\Accueil\\accueil.ini";
    const std::wstring backup = L"c:\\Valcoreaux\\Backup\\Backup.ini";
    for (const std::wstring& file : {accueil, backup}) ReadProfile(machine.settings, file, text);

    const std::wstring code = LireINI(machine.app, accueil, L"ACCUEIL-DEFAULTS", L"Lang");
    Require(code.size() <= LongestValue);
    try {
        ChooseLanguage(machine.app);
        Require(machine.app.language->lngLangue == 0 || machine.app.language->lngLangue == 10000);
        Require(machine.app.language->blnLangueWindows == code.empty());
        const bool isFrench = code.empty() || code == L"français" || ToLong(code, L",") == 20001;
        Require(isFrench == (machine.app.language->lngLangue == 0));
    } catch (const RuntimeError& error) {
        Require(error.Number() == static_cast<std::int32_t>(ErrorNumber::TypeMismatch) ||
                error.Number() == static_cast<std::int32_t>(ErrorNumber::Overflow));
        Require(machine.app.language->lngLangue == 0);
    }
    const std::wstring dvd = LireINI(machine.app, backup, L"DVD", L"Disponible");
    Require(IsDvdAllowed(machine.app) == (UpperCase(dvd) == L"OUI"));
    return 0;
}
