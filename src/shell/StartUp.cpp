#include "shell/StartUp.h"

#include "platform/Drives.h"
#include "platform/Processes.h"
#include "platform/RuntimeError.h"
#include "platform/System.h"
#include "resources/TextId.h"
#include "shell/UserProfile.h"

std::wstring ParentFolder(const std::wstring& folder) {
    const auto lastBackslash = folder.rfind(L'\\');
    if (lastBackslash == std::wstring::npos) throw RuntimeError(ErrorNumber::InvalidCall);
    return folder.substr(0, lastBackslash);
}

double MeasureWorkDrive(const Application& app) {
    return app.machine.drives.FreeClusterBytes(app.WorkFolder().substr(0, 3));
}

void ReadUser(Application& app) {
    LireProfilUtilisateur(app);
    app.accountName = app.machine.system.AccountName();
}

std::wstring MainWindowTitle(const Application& app) {
    return app.Text(TextId::ProgramTitle) + L" - Version " + VersionText();
}

void OpenHelp(const Application& app) {
    const std::wstring folder = L"C:\\Valcoreaux\\Backup\\";
    app.machine.processes.Open(folder + (app.lngLangue == 0 ? L"Copie de Sauvegarde.pdf" : L"Backup.pdf"), folder);
}
