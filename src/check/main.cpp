#include "ProcessSetUp.h"
#include "Workstation.h"
#include "archive/DriveLines.h"
#include "check/CheckCommand.h"
#include "check/forms/CheckWindow.h"
#include "core/CommandWords.h"
#include "core/LanguageValues.h"
#include "core/StartUpValues.h"
#include "core/UsbAnswer.h"
#include "core/UserValues.h"
#include "platform/Locale.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"
#include "platform/windows/WindowsConsole.h"
#include "platform/windows/WindowsFileStore.h"
#include "resources/TextId.h"
#include "shell/LanguageChoice.h"
#include "shell/StartUp.h"
#include "ui/MessagePump.h"
#include "ui/PathDialogs.h"

#include <windows.h>

#include <string>
#include <vector>

namespace {

constexpr DWORD LongestWaitMilliseconds = 2000;
constexpr DWORD WaitStepMilliseconds = 20;

/// The language as the main program chooses it; French where its settings cannot be understood.
void ReadSettings(Application& app) {
    // Every disk may be read without a question.
    app.usbAnswer->blnQuestionUSB = 1;
    app.usbAnswer->intReponseUSB = box::AnswerYes;
    try {
        ReadUser(app);
        app.startUp->strRepRacine = ParentFolder(app.ProgramFolder());
        ChooseLanguage(app);
    } catch (const RuntimeError&) {
        app.language->lngLangue = 0;
    }
}

/// The drives' lines, for a thread that shares nothing with the window's.
std::vector<std::wstring> ListDrives(std::int32_t language) {
    try {
        Workstation workstation;
        Application app(workstation.Ports());
        ReadSettings(app);
        app.language->lngLangue = language;
        return DriveLines(app);
    } catch (const std::exception&) {
        return {};
    }
}

CheckWays WaysOf(const Application& app) {
    CheckWays ways;
    ways.files = std::make_shared<WindowsFileStore>();
    ways.driveLines = [language = app.language->lngLangue] { return ListDrives(language); };
    ways.chooseBackup = ui::ChooseFolderOrFile;
    ways.chooseTarget = ui::ChooseFolder;
    ways.chooseReport = [&app](ui::Form& owner, const std::wstring& name) {
        return ui::ChooseNewFile(
            owner, name, {{app.Text(TextId::CheckReportText), L"txt"}, {app.Text(TextId::CheckReportJson), L"json"}});
    };
    return ways;
}

/// Shows the window until it is closed. A second one does not disturb it: neither writes where the other reads.
void RunWindow(Application& app) {
    CheckWindow window(app, WaysOf(app));
    window.Create();
    window.Show();
    ui::RunMessagesUntil([&] { return !window.IsLoaded(); });
    for (DWORD waited = 0; !window.HasWorkEnded() && waited < LongestWaitMilliseconds; waited += WaitStepMilliseconds)
        Sleep(WaitStepMilliseconds);
    // A thread that hangs on a bad disc must not find the program half taken down.
    if (!window.HasWorkEnded()) ExitProcess(0);
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const ProcessSetUp setUp;
    Workstation workstation;
    Application app(workstation.Ports());
    ReadSettings(app);

    std::vector<std::wstring> words = CommandWords(GetCommandLineW());
    words.erase(words.begin());
    if (words.empty()) {
        RunWindow(app);
        return 0;
    }
    WindowsFileStore files;
    WindowsConsole console;
    const NumberWords numbers{[&app](TextId id) { return app.Text(id); }, app.machine.locale->DecimalSeparator()};
    return RunCommand(files, console, numbers, words, app.user->strProfilUtilisateur);
}
