#include "archive/modGestionRestaure.h"

#include "archive/CommandLines.h"
#include "archive/clsCopie.h"
#include "core/ArchiveValues.h"
#include "platform/Drives.h"
#include "shell/ErrorReport.h"

namespace modGestionRestaure {

std::int32_t UnZipOkrBackup(Application& app, const std::wstring& lecteur, const std::wstring& nom) {
    return Guarded(app, L"UnZipOkrBackup, Module modGestionRestaure", [&] {
        return clsCopie(app).ExecCmd(
            UnpackOuterCommand(app.ProgramFolder(), lecteur + nom, app.WorkFolder(), app.archive->backupPassword));
    });
}

std::int32_t UnZipIntermediaire(Application& app, const std::wstring& cheminRestauration,
                                const std::wstring& nomArchive) {
    return Guarded(app, L"UnZipIntermediaire, Module modGestionRestaure", [&] {
        return clsCopie(app).ExecCmd(
            UnpackInnerCommand(app.ProgramFolder(), app.WorkFolder(), cheminRestauration, nomArchive));
    });
}

bool CanOpenDrive(const Application& app, const std::wstring& letter) {
    return app.machine.drives->CanOpenVolume(letter);
}

} // namespace modGestionRestaure
