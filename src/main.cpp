#include "ProcessSetUp.h"
#include "Workstation.h"
#include "archive/forms/frmMotPasse.h"
#include "backup/HandOver.h"
#include "backup/forms/frmBackup.h"
#include "platform/windows/SingleInstance.h"
#include "restore/forms/frmRestaureCD.h"
#include "shell/StartUp.h"
#include "shell/forms/frmMain.h"
#include "ui/MessagePump.h"

#include <optional>
#include <string>
#include <utility>

namespace {

/// Shows a backup window over the main window until it is closed.
void ShowBackup(Application& app, frmMain& parent, Medium medium, const std::optional<std::wstring>& drive) {
    frmBackup window(app, [&app](ui::Form& owner) {
        return modGestionMotPasse::DemanderMotPasse(app, &owner, PasswordMode::Creation);
    });
    HandOver(window, medium, parent, drive);
    window.ShowModal(&parent);
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const ProcessSetUp setUp;
    Workstation workstation;
    Application app(workstation.Ports());

    SingleInstance instance(app.ProgramFolder());
    if (!instance.IsFirst()) {
        instance.ShowFirst();
        return 0;
    }

    ReadUser(app);
    frmMain::Openers openers;
    openers.showBackup = [&app](frmMain& parent, Medium medium, const std::optional<std::wstring>& drive) {
        ShowBackup(app, parent, medium, drive);
    };
    // The restore window is one for the whole run, made when it is first asked for.
    std::optional<frmRestaureCD> restoreWindow;
    openers.showRestore = [&](frmMain& parent) {
        if (!restoreWindow) restoreWindow.emplace(app, parent);
        restoreWindow->ShowModal(&parent);
    };
    frmMain mainWindow(app, std::move(openers));
    mainWindow.Create();
    instance.Mark(mainWindow.Handle());
    mainWindow.Show();
    ui::RunMessagesUntil([&] { return !mainWindow.IsLoaded(); });
    return 0;
}
