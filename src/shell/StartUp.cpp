#include "shell/StartUp.h"

#include "core/Languages.h"
#include "core/UserValues.h"
#include "platform/Drives.h"
#include "platform/Processes.h"
#include "platform/RuntimeError.h"
#include "platform/UserAccount.h"
#include "resources/TextId.h"
#include "shell/UserProfile.h"

std::wstring ParentFolder(const std::wstring& folder) {
    const auto lastBackslash = folder.rfind(L'\\');
    if (lastBackslash == std::wstring::npos) throw RuntimeError(ErrorNumber::InvalidCall);
    return folder.substr(0, lastBackslash);
}

double MeasureWorkDrive(const Application& app) {
    const Drives& drives = *app.machine.drives;
    try {
        return drives.FreeClusterBytes(app.WorkFolder().substr(0, 3));
    } catch (const RuntimeError&) {
        // A program that was started from a server's share has no drive letter.
    }
    try {
        return drives.Space(app.ProgramFolder()).freeBytes;
    } catch (const RuntimeError&) {
        return 0;
    }
}

void ReadUser(Application& app) {
    LireProfilUtilisateur(app);
    app.user->accountName = app.machine.account->Name();
}

std::wstring MainWindowTitle(const Application& app) {
    return app.Text(TextId::ProgramTitle) + L" - Version " + VersionText();
}

void OpenHelp(Application& app) {
    const std::wstring folder = L"C:\\Valcoreaux\\Backup\\";
    app.machine.processes->Open(folder + LanguageOf(app).guide, folder);
}
