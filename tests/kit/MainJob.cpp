#include "MainJob.h"

#include "InformationWindow.h"
#include "Picture.h"
#include "Samples.h"
#include "WorkFolder.h"
#include "archive/forms/frmMotPasseIds.h"
#include "backup/forms/frmBackupIds.h"
#include "restore/forms/frmRestaureCDIds.h"
#include "selection/forms/ctlSelectionFichiersIds.h"
#include "shell/forms/frmMainIds.h"

#include <algorithm>
#include <chrono>

namespace kit {

namespace {

constexpr FormMark BackupForm{L"frmBackup", IDC_cmdLancer};
constexpr FormMark RestoreForm{L"frmRestaureCD", IDC_lvFichiersRepertoires};
constexpr FormMark PasswordForm{L"frmMotPasse", IDC_txtMotPasse};
constexpr int RunSeconds = 1800;

/// The place of a folder in the list of folders: the way down to it comes first, the disk's root with it.
std::size_t DepthOf(const fs::path& folder) {
    const std::wstring path = folder.wstring();
    return static_cast<std::size_t>(std::count(path.begin(), path.end(), L'\\'));
}

/// What the window shows of a folder: a file that begins with a dot is hidden on some systems.
std::vector<std::wstring> BelowOf(const fs::path& folder, bool areFolders) {
    std::vector<std::wstring> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const bool isHidden = (GetFileAttributesW(entry.path().c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0;
        if (entry.is_directory() == areFolders && !isHidden) names.push_back(entry.path().filename().wstring());
    }
    return names;
}

/// Waits until the window shows a folder's files, as it does once the folder is open.
void WaitForFilesOf(Program& program, HWND backup, const fs::path& folder) {
    std::vector<std::wstring> expected = BelowOf(folder, false);
    std::sort(expected.begin(), expected.end());
    program.Wait(L"the files of " + folder.filename().wstring(), [&] {
        std::vector<std::wstring> shown = program.Entries(backup, IDC_flbSelectFichier);
        std::sort(shown.begin(), shown.end());
        return program.IsUsable(backup, IDC_flbSelectFichier) && shown == expected;
    });
}

} // namespace

std::wstring InSeconds(double seconds) {
    wchar_t text[32] = {};
    std::swprintf(text, 32, L"%.2f s", seconds);
    return text;
}

void MainJob::Picture(HWND window, const wchar_t* what) {
    if (plan_.arePicturesTaken) report_.AddPicture(plan_.language + L" " + what, PictureOf(window));
}

JobTimes MainJob::Run() {
    const Snapshot before = SnapshotOf(plan_.documents);
    BackUp();
    report_.Require({L"le support porte les deux fichiers de la copie, et rien d'autre n'y a bougé",
                     L"the medium holds the backup's two files, and nothing else on it moved"},
                    [&] { return stick_.RequireBackup(), std::wstring(); });
    report_.Require({L"suppression des originaux", L"the originals are deleted"}, [&] {
        if (!DeleteTree(plan_.documents)) throw Failure(L"they cannot be deleted");
        fs::create_directories(plan_.documents);
        return std::wstring();
    });
    Restore();
    report_.Require({L"comparaison avec les originaux", L"comparison with the originals"}, [&] {
        const Snapshot after = SnapshotOf(plan_.documents);
        if (const std::wstring differences = Differences(before, after); !differences.empty())
            throw Failure(differences);
        return std::to_wstring(after.size());
    });
    if (!stick_.Clear()) throw Failure(L"the backup's files cannot be deleted from the medium");
    return times_;
}

HWND MainJob::OpenBackup(Program& program) {
    const HWND main = program.MainWindow();
    Picture(main, L"frmMain");
    program.Press(main, stick_.IsRemovable() ? IDC_optDisqueAmovible : IDC_optDisqueExterne);
    program.Choose(main, stick_.IsRemovable() ? IDC_cboDrive : IDC_cboDisqueExterne, stick_.Root());
    program.Press(main, IDC_cmdBackup);
    const HWND backup = program.FirstWindow(BackupForm);
    for (const std::wstring& words : program.SaidAtStart())
        report_.Tell({L"message au démarrage", L"message at the start"}, words);
    return backup;
}

void MainJob::AddFolder(Program& program, HWND backup, const std::wstring& name) {
    const std::size_t depth = DepthOf(plan_.documents);
    const int rows = program.RowCount(backup, IDC_lvFichRep);
    const std::vector<std::wstring> entries = program.Entries(backup, IDC_dlbSelectRep);
    const auto found = std::find(entries.begin() + static_cast<std::ptrdiff_t>(std::min(depth + 1, entries.size())),
                                 entries.end(), name);
    if (found == entries.end()) throw Failure(L"the list of folders lacks " + name);
    program.ChooseAt(backup, IDC_dlbSelectRep, static_cast<std::size_t>(found - entries.begin()));
    WaitForFilesOf(program, backup, plan_.documents / name);
    program.Press(backup, IDC_cmdAjouterRep);
    program.Wait(L"a row for " + name, [&] { return program.RowCount(backup, IDC_lvFichRep) == rows + 1; });
    program.ChooseAt(backup, IDC_dlbSelectRep, depth);
    WaitForFilesOf(program, backup, plan_.documents);
}

void MainJob::PickEverything(Program& program, HWND backup) {
    WaitForFilesOf(program, backup, plan_.documents);
    const std::size_t files = BelowOf(plan_.documents, false).size();
    for (const std::wstring& name : program.Entries(backup, IDC_flbSelectFichier))
        items_.push_back((plan_.documents / name).wstring());
    for (std::size_t index = 0; index < files; ++index) program.ChooseAt(backup, IDC_flbSelectFichier, index);
    if (files > 0) program.Press(backup, IDC_cmdAjouterFichier);
    program.Wait(L"a row for each file",
                 [&] { return program.RowCount(backup, IDC_lvFichRep) == static_cast<int>(files); });
    for (const std::wstring& name : BelowOf(plan_.documents, true)) {
        AddFolder(program, backup, name);
        items_.push_back((plan_.documents / name).wstring());
    }
}

void MainJob::RefuseWeakPassword(Program& program) {
    const HWND dialog = program.Window(PasswordForm);
    program.SetText(dialog, IDC_txtMotPasse, L"facile");
    program.SetText(dialog, IDC_txtConfirmation, L"facile");
    Picture(dialog, L"frmMotPasse");
    program.Press(dialog, IDC_cmdOK);
    Picture(program.OpenBox().window, L"MessageBox");
    program.Answer();
}

double MainJob::FinishAfterPassword(Program& program, const wchar_t* picture) {
    const HWND dialog = program.Window(PasswordForm);
    program.SetText(dialog, IDC_txtMotPasse, Password);
    if (IsWindowVisible(Program::Control(dialog, IDC_txtConfirmation)))
        program.SetText(dialog, IDC_txtConfirmation, Password);
    const auto started = std::chrono::steady_clock::now();
    program.Press(dialog, IDC_cmdOK);
    const auto isBoxOpen = [&] { return program.IsBoxOpen(); };
    program.Wait(L"the last message", isBoxOpen, RunSeconds);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    Picture(program.OpenBox().window, picture);
    const Box box = program.Answer();
    report_.Tell({L"dernier message", L"last message"}, box.InWords());
    program.RequireEnd();
    return seconds;
}

void MainJob::BackUp() {
    report_.Require({L"copie de sécurité par les fenêtres", L"backup through the windows"}, [&] {
        Program program(plan_.programFolder);
        const HWND backup = OpenBackup(program);
        PickEverything(program, backup);
        Picture(backup, L"frmBackup");
        if (plan_.arePicturesTaken)
            report_.AddPicture(plan_.language + L" frmInfoDisque", InformationPicture(program, backup));
        program.Press(backup, IDC_cmdLancer);
        if (plan_.arePicturesTaken) RefuseWeakPassword(program);
        times_.backupSeconds = FinishAfterPassword(program, L"MessageBox 2");
        return std::to_wstring(items_.size()) + L", " + InSeconds(times_.backupSeconds);
    });
}

void MainJob::RefuseWrongPassword(Program& program) {
    const HWND dialog = program.Window(PasswordForm);
    program.SetText(dialog, IDC_txtMotPasse, L"Valcoreaux2");
    program.Press(dialog, IDC_cmdOK);
    report_.Tell({L"mot de passe erroné", L"wrong password"}, program.OpenBox().InWords());
    program.Answer();
}

void MainJob::Restore() {
    report_.Require({L"restauration par les fenêtres", L"restore through the windows"}, [&] {
        Program program(plan_.programFolder);
        const HWND main = program.MainWindow();
        program.Press(main, IDC_optRestaure);
        program.Press(main, IDC_cmdBackup);
        const HWND restore = program.FirstWindow(RestoreForm);
        program.Choose(restore, IDC_lstDrive, stick_.Root());
        program.Wait(L"a row for each item", [&] {
            return program.RowCount(restore, IDC_lvFichiersRepertoires) == static_cast<int>(items_.size());
        });
        Picture(restore, L"frmRestaureCD");
        program.Press(restore, IDC_cmdLancerRestauration);
        if (plan_.arePicturesTaken) RefuseWrongPassword(program);
        times_.restoreSeconds = FinishAfterPassword(program, L"MessageBox 3");
        return InSeconds(times_.restoreSeconds);
    });
}

} // namespace kit
