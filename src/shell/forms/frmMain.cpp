#include "shell/forms/frmMain.h"

#include "platform/AtScopeEnd.h"
#include "resources/TextId.h"
#include "shell/DiskDetection.h"
#include "shell/Language.h"
#include "shell/StartUp.h"
#include "shell/WriterDetection.h"

#include <array>
#include <utility>

namespace {

constexpr std::array Captions = {
    Caption{IDC_cmdSortie, TextId::QuitCaption},
    Caption{IDC_cmdBackup, TextId::FirstNextCaption},
    Caption{IDC_frmAction, TextId::ActionFrame},
    Caption{IDC_optRestaure, TextId::RestoreChoice},
    Caption{IDC_optBackup, TextId::BackupChoice},
    Caption{IDC_frmMedium, TextId::MediumFrame},
    Caption{IDC_optCD, TextId::CdChoice},
    Caption{IDC_optDVD, TextId::DvdChoice},
    Caption{IDC_optDisqueAmovible, TextId::RemovableDiskChoice},
    Caption{IDC_lblType, TextId::MediumTypeHeading},
    Caption{IDC_lblDetecte, TextId::DetectedHeading},
    Caption{IDC_cmdAide, TextId::HelpCaption},
    Caption{IDC_optDisqueExterne, TextId::ExternalDiskChoice},
    Caption{IDC_removableDriveName, TextId::RemovableDiskChoice},
    Caption{IDC_externalDriveName, TextId::ExternalDiskChoice},
};

constexpr int LoadingSteps = 6;
constexpr int ActionWidthForBackupTwips = 3375;
constexpr int ActionWidthForRestoreTwips = 5775;

} // namespace

frmMain::frmMain(Application& app, Openers openers)
    : ApplicationForm(app, IDD_frmMain, L"frmMain"), openers_(std::move(openers)) {}

void frmMain::OnLoad() {
    SetCancelButton(IDC_cmdSortie);
    SetFrame(IDC_frmMedium,
             {IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne, IDC_cboDrive, IDC_cboDisqueExterne,
              IDC_lblType, IDC_lblDetecte, IDC_lblDetCD, IDC_lblDetDVD, IDC_lblDetRemDisk, IDC_lblDetExtDisk});
    optBackup.OnClick([this] { optBackup_Click(); });
    optRestaure.OnClick([this] { optRestaure_Click(); });
    optCD.OnClick([this] { Medium_Click(L"optCD_Click, module frmMain"); });
    optDVD.OnClick([this] { Medium_Click(L"optDVD_Click, module frmMain"); });
    optDisqueAmovible.OnClick([this] { Medium_Click(L"optDisqueAmovible_Click, module frmMain"); });
    optDisqueExterne.OnClick([this] { Medium_Click(L"optDisqueExterne_Click, module frmMain"); });
    cmdBackup.OnClick([this] { cmdBackup_Click(); });
    cmdAide.OnClick([this] { cmdAide_Click(); });
    cmdSortie.OnClick([this] { cmdSortie_Click(); });
    fullExit_ = false;
    hasStarted_ = false;
}

void frmMain::OnActivate() {
    // The window is shown first, so that the progress of its loading can be seen.
    if (std::exchange(hasStarted_, true)) return;
    Form_Load();
}

bool frmMain::OnClosing() {
    // While another window is open over this one, that window is the one to close.
    return IsWindowEnabled(Handle()) != FALSE;
}

void frmMain::OnUnload() {
    app_.machine.messageLoop.SetPointer(Pointer::Default);
}

void frmMain::Form_Load() {
    const bool isComplete = Guarded(L"Form_Load, module frmMain", [this] { return LoadStepByStep(); });
    if (isComplete || !IsLoaded()) return;
    // A start-up that failed stays as far as it got; what is left to the user is to leave.
    cmdSortie.Enable(true);
    app_.machine.messageLoop.SetPointer(Pointer::Default);
}

/// True when every step was taken; false when the window was closed meanwhile.
bool frmMain::LoadStepByStep() {
    app_.machine.messageLoop.SetPointer(Pointer::Hourglass);
    DisableChoices();
    pgbInit.SetRange(0, LoadingSteps);
    pgbInit.SetValue(0);
    pgbInit.Show(true);
    app_.machine.messageLoop.RunPending();
    app_.strRepRacine = ParentFolder(app_.ProgramFolder());

    InitLangue();
    if (!Progress()) return false;
    InitCaptions();
    if (!Progress()) return false;
    InitGraveur(DiscFamily::Cd);
    if (!Progress()) return false;
    InitGraveur(DiscFamily::Dvd);
    if (!Progress()) return false;
    InitDisqueExterne();
    if (!Progress()) return false;
    InitDisqueAmovible();
    if (!Progress()) return false;

    cmdSortie.Enable(true);
    pgbInit.Show(false);
    optRestaure.Enable(true);
    optBackup.Enable(true);
    cmdBackup.Enable(true);
    optBackup.Select(IDC_optBackup, IDC_optRestaure);
    optBackup.SetFocus();
    ShowMedia();
    SelectFirstMedium();
    app_.dblEspaceDisponible = MeasureProgramDrive(app_);
    app_.machine.messageLoop.SetPointer(Pointer::Default);
    return true;
}

void frmMain::DisableChoices() {
    for (const int controlId : {IDC_optCD, IDC_optDisqueAmovible, IDC_optDVD, IDC_cboDrive, IDC_optDisqueExterne,
                                IDC_cboDisqueExterne, IDC_optRestaure, IDC_optBackup, IDC_cmdBackup})
        ui::Control(*this, controlId).Enable(false);
}

/// Shows that one more step is done. False when the window was closed.
bool frmMain::Progress() {
    pgbInit.SetValue(pgbInit.Value() + 1);
    app_.machine.messageLoop.RunPending();
    return IsLoaded();
}

void frmMain::InitLangue() {
    Guarded(L"InitLangue, module frmMain", [this] { ChooseLanguage(app_); });
}

void frmMain::InitCaptions() {
    Guarded(L"InitCaptions, module frmMain", [this] {
        SetTitle(MainWindowTitle(app_));
        SetCaptions(Captions);
    });
}

void frmMain::InitGraveur(DiscFamily family) {
    const auto medium = static_cast<Medium>(family);
    const bool isComplete = Guarded(L"InitGraveur, module frmMain", [&] {
        WakeDrives(app_);
        const WriterProbe probe(app_, family);
        ShowOffer(medium, probe.Offer());
        WaitForNextSecond(app_, [this] { return !IsLoaded(); });
        return true;
    });
    if (!isComplete) ShowOffer(medium, {});
}

void frmMain::InitDisqueExterne() {
    Guarded(L"InitDisqueExterne, module frmMain", [this] {
        const MediumOffer offer = DetectExternalDisks(app_);
        FillDriveList(Medium::ExternalDisk, offer);
        ShowOffer(Medium::ExternalDisk, offer);
    });
}

void frmMain::InitDisqueAmovible() {
    Guarded(L"InitDisqueAmovible, module frmMain", [this] {
        const MediumOffer offer = DetectRemovableDisks(app_);
        FillDriveList(Medium::RemovableDisk, offer);
        ShowOffer(Medium::RemovableDisk, offer);
    });
}

void frmMain::FillDriveList(Medium medium, const MediumOffer& offer) {
    ui::ComboBox& list = DriveListOf(medium);
    list.Clear();
    for (const std::wstring& root : offer.roots) {
        list.Add(root);
        if (list.Count() == 1) list.Select(0);
    }
    if (!offer.isEnabled) list.Enable(false);
}

void frmMain::ShowOffer(Medium medium, const MediumOffer& offer) {
    ui::Option& option = OptionOf(medium);
    option.Enable(offer.isEnabled);
    // A medium that is gone must not stay the one that the backup goes to.
    if (!offer.isEnabled && option.IsChecked()) ui::Option::SelectNone(*this, IDC_optCD, IDC_optDisqueExterne);
    LabelOf(medium).SetText(Text(offer.LabelId()));
    if (medium == Medium::Cd || medium == Medium::Dvd) {
        toolTips_.Set(option, offer.ToolTipId() == TextId::None ? std::wstring() : Text(offer.ToolTipId()));
    }
}

void frmMain::MajTexteBouton() {
    Guarded(L"MajTexteBouton, module frmMain",
            [this] { cmdBackup.SetText(Text(optBackup.IsChecked() ? TextId::NextCaption : TextId::RestoreCaption)); });
}

void frmMain::ShowMedia() {
    MajTexteBouton();
    frmAction.SetWidth(ActionWidthForBackupTwips);
    frmMedium.Show(true);
}

void frmMain::SelectFirstMedium() {
    const auto first = FirstOffered(
        {optCD.IsEnabled(), optDVD.IsEnabled(), optDisqueAmovible.IsEnabled(), optDisqueExterne.IsEnabled()});
    if (first) OptionOf(*first).Select(IDC_optCD, IDC_optDisqueExterne);
    EnableDriveLists();
}

/// A drive list can be used for its own medium only.
void frmMain::EnableDriveLists() {
    cboDrive.Enable(optDisqueAmovible.IsChecked());
    cboDisqueExterne.Enable(optDisqueExterne.IsChecked());
}

void frmMain::optBackup_Click() {
    Guarded(L"optBackup_Click, module frmMain", [this] {
        // An option that is merely given the focus notifies as well.
        if (!optBackup.IsChecked()) return;
        ShowMedia();
        if (isDetecting_) return;
        {
            isDetecting_ = true;
            const AtScopeEnd done([this] { isDetecting_ = false; });
            DetectAgain();
        }
        if (std::exchange(isBackupClickHeld_, false)) cmdBackup_Click();
    });
}

void frmMain::DetectAgain() {
    InitGraveur(DiscFamily::Cd);
    if (!IsLoaded()) return;
    InitGraveur(DiscFamily::Dvd);
    if (!IsLoaded()) return;
    InitDisqueAmovible();
    InitDisqueExterne();
}

void frmMain::optRestaure_Click() {
    Guarded(L"optRestaure_Click, module frmMain", [this] {
        if (!optRestaure.IsChecked()) return;
        // A click that waits for the detection was meant for a backup.
        if (std::exchange(isBackupClickHeld_, false)) app_.machine.messageLoop.SetPointer(Pointer::Default);
        MajTexteBouton();
        frmAction.SetWidth(ActionWidthForRestoreTwips);
        frmMedium.Show(false);
    });
}

void frmMain::Medium_Click(const wchar_t* procedure) {
    Guarded(procedure, [this] { EnableDriveLists(); });
}

void frmMain::cmdBackup_Click() {
    Guarded(L"cmdBackup_Click, module frmMain", [this] {
        if (!IsLoaded()) return;
        app_.machine.messageLoop.SetPointer(Pointer::Hourglass);
        // The detection lets messages run; it holds the writers, so the click waits for its end.
        isBackupClickHeld_ = isDetecting_;
        if (isDetecting_) return;
        if (optBackup.IsChecked()) {
            if (const auto medium = SelectedMedium()) {
                std::optional<std::wstring> drive;
                if (*medium == Medium::RemovableDisk || *medium == Medium::ExternalDisk)
                    drive = DriveListOf(*medium).SelectedText();
                openers_.showBackup(*this, *medium, drive);
            }
        }
        app_.machine.messageLoop.SetPointer(Pointer::Default);
        if (optRestaure.IsChecked()) openers_.showRestore(*this);
        if (fullExit_) EndProgram();
    });
}

void frmMain::cmdAide_Click() {
    Guarded(L"cmdAide_Click, module frmMain", [this] { OpenHelp(app_); });
}

void frmMain::cmdSortie_Click() {
    Guarded(L"cmdSortie_Click, module frmMain", [this] { EndProgram(); });
}

/// The program ends with its main window.
void frmMain::EndProgram() {
    Unload();
}

std::optional<Medium> frmMain::SelectedMedium() {
    for (const Medium medium : AllMedia) {
        if (OptionOf(medium).IsChecked()) return medium;
    }
    return std::nullopt;
}

ui::Option& frmMain::OptionOf(Medium medium) {
    const std::array options{&optCD, &optDVD, &optDisqueAmovible, &optDisqueExterne};
    return *options[static_cast<std::size_t>(medium)];
}

ui::Label& frmMain::LabelOf(Medium medium) {
    const std::array labels{&lblDetCD, &lblDetDVD, &lblDetRemDisk, &lblDetExtDisk};
    return *labels[static_cast<std::size_t>(medium)];
}

ui::ComboBox& frmMain::DriveListOf(Medium medium) {
    return medium == Medium::RemovableDisk ? cboDrive : cboDisqueExterne;
}
