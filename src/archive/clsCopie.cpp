#include "archive/clsCopie.h"

#include "archive/CommandLines.h"
#include "archive/MediumPair.h"
#include "archive/WorkFolder.h"
#include "archive/clsListe.h"
#include "core/ArchiveValues.h"
#include "platform/Clock.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/MessageLoop.h"
#include "platform/Processes.h"
#include "platform/RuntimeError.h"
#include "selection/clsColFileInfo.h"
#include "shell/ErrorReport.h"

#include <memory>

namespace {

std::wstring InWorkFolder(const Application& app, const std::wstring& name) {
    return app.WorkFolder() + L"\\" + name;
}

/// Another copy of the program has a medium for an instant, to finish an exchange, or as long as its own backup takes;
/// throws 70 then.
std::unique_ptr<Hold> ClaimMedium(Machine& machine, const std::wstring& root) {
    constexpr int attempts = 20;
    constexpr std::uint32_t pauseMilliseconds = 50;
    for (int attempt = 1;; ++attempt) {
        if (std::unique_ptr<Hold> claim = machine.drives->Claim(root)) return claim;
        if (attempt == attempts) {
            throw RuntimeError(static_cast<std::int32_t>(ErrorNumber::PermissionDenied),
                               L"Another copy of this program is changing the disk");
        }
        machine.clock->Sleep(pauseMilliseconds);
    }
}

} // namespace

bool clsCopie::CopierListeFichiers(clsColFileInfo& varrListeFichiers, ProgressBar& pbProgress,
                                   BackupParent& frmParent) {
    return Guarded(app_, L"CopierListeFichiers, Class clsCopie", [&] {
        Files& files = *app_.machine.files;
        const std::int32_t count = varrListeFichiers.Count();
        pbProgress.SetRange(0, count);
        // The size of an earlier archive must not count for one that is not finished.
        app_.archive->archiveSizeBytes = 0;
        ResetWorkFolder(app_);
        for (std::int32_t position = 1; position <= count; ++position) {
            if (frmParent.StopWrite()) return false;
            if (!ArchiveItem(varrListeFichiers.Item(position)->strNom, position, pbProgress, frmParent)) return false;
        }
        // Without an item the archiver has made no archive.
        app_.archive->archiveSizeBytes =
            count == 0 ? 0 : static_cast<std::int64_t>(files.FileSize(InWorkFolder(app_, ArchiveName)));
        files.Copy(app_.archive->listFilePath, InWorkFolder(app_, ControlFileName));
        // The place in the Temp folder is the same for every copy of the program.
        if (ListPrint(files.Read(InWorkFolder(app_, ControlFileName))) != app_.archive->listFilePrint)
            throw RuntimeError(ErrorNumber::PathFileAccessError);
        return true;
    });
}

bool clsCopie::ArchiveItem(const std::wstring& path, std::int32_t position, ProgressBar& progress,
                           BackupParent& parent) {
    const std::wstring inner = InWorkFolder(app_, InnerArchiveName(position));
    const bool isArchived =
        app_.machine.files->IsDirectory(path) ? ArchiverRepertoire(path, inner) : ArchiverFichier(path, inner);
    if (!isArchived) return false;
    progress.SetValue(position);
    parent.RefreshWindow();
    app_.machine.messageLoop->RunPending();
    if (!ArchiverZipFinal(inner + L".zip", InWorkFolder(app_, ArchiveName))) return false;
    app_.machine.files->Delete(inner + L".zip");
    return true;
}

bool clsCopie::CopierUSB(const std::wstring& vDisque) {
    return Guarded(app_, L"CopierUSB, Class clsCopie", [&] {
        if (!app_.machine.drives->Exists(vDisque)) return false;
        const std::unique_ptr<Hold> claim = ClaimMedium(app_.machine, vDisque);
        Files& files = *app_.machine.files;
        FinishExchange(files, vDisque);
        const PairSource source{InWorkFolder(app_, ArchiveName), InWorkFolder(app_, ControlFileName)};
        RequireRoomInFileSystem(*app_.machine.drives, vDisque, files.FileSize(source.archive));
        ExchangePair(files, vDisque, source);
        RemoveWorkFolder(app_);
        return true;
    });
}

bool clsCopie::ArchiverRepertoire(const std::wstring& vstrSource, const std::wstring& vstrDestination) {
    return Guarded(app_, L"ArchiverRepertoire, Class clsCopie", [&] {
        if (!app_.machine.files->FolderExists(vstrSource)) return false;
        ExecCmd(PackFolderCommand(app_.ProgramFolder(), vstrSource, vstrDestination));
        return true;
    });
}

bool clsCopie::ArchiverFichier(const std::wstring& vstrSource, const std::wstring& vstrDestination) {
    return Guarded(app_, L"ArchiverFichier, Class clsCopie", [&] {
        if (!app_.machine.files->FileExists(vstrSource)) return false;
        ExecCmd(PackFileCommand(app_.ProgramFolder(), vstrSource, vstrDestination));
        return true;
    });
}

bool clsCopie::ArchiverZipFinal(const std::wstring& vstrSource, const std::wstring& vstrDestination) {
    return Guarded(app_, L"ArchiverZipFinal, Class clsCopie", [&] {
        ExecCmd(PackFinalCommand(app_.ProgramFolder(), vstrSource, vstrDestination, app_.archive->backupPassword));
        return true;
    });
}

std::int32_t clsCopie::ExecCmd(const std::wstring& cmdline) {
    return Guarded(app_, L"ExecCmd, Class clsCopie", [&] { return app_.machine.processes->Run(cmdline); });
}

bool clsCopie::ValidZipApp() {
    return Guarded(app_, L"VerifyZipApp, Class clsCopie",
                   [&] { return app_.machine.files->FileExists(app_.ProgramFolder() + L"\\" + ArchiverName); });
}

std::wstring clsCopie::GetZipAppName() {
    return Guarded(app_, L"GetZipAppName_Error, Class clsCopie", [] { return std::wstring(ArchiverName); });
}
