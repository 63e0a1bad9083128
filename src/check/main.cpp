#include "Workstation.h"
#include "check/CheckCommand.h"
#include "core/LanguageValues.h"
#include "core/StartUpValues.h"
#include "core/UserValues.h"
#include "platform/MessageBoxes.h"
#include "platform/windows/QuietErrors.h"
#include "platform/windows/SystemLibrary.h"
#include "platform/windows/WindowsConsole.h"
#include "platform/windows/WindowsFileStore.h"
#include "resources/TextId.h"
#include "shell/Language.h"
#include "shell/StartUp.h"

#include <windows.h>

#include <string>
#include <vector>

namespace {

/// The language as the main program chooses it; French where its settings cannot be understood.
void ReadSettings(Application& app) {
    try {
        ReadUser(app);
        app.startUp->strRepRacine = ParentFolder(app.ProgramFolder());
        ChooseLanguage(app);
    } catch (const RuntimeError&) {
        app.language->lngLangue = 0;
    }
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    LoadLibrariesFromSystemOnly();
    SuppressDiskBoxes();
    Workstation workstation;
    Application app(workstation.Ports());
    ReadSettings(app);
    const Texts texts = [&app](TextId id) { return app.Text(id); };

    std::vector<std::wstring> words = CommandWords(GetCommandLineW());
    words.erase(words.begin());
    WindowsFileStore files;
    WindowsConsole console;
    // Started by a double click, it would end without a word.
    if (words.empty() && !console.HasOutput())
        app.ShowMessage(TextId::CheckUsage, TextId::CheckTitle, box::Information);
    return RunCommand(files, console, texts, words, app.user->strProfilUtilisateur);
}
