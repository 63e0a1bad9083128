#include "shell/forms/frmMain.h"

#include "core/StartUpValues.h"
#include "core/UsbAnswer.h"
#include "platform/AtScopeEnd.h"
#include "platform/MessageBoxes.h"
#include "platform/MessageLoop.h"
#include "platform/RuntimeError.h"
#include "platform/discs/DiscWriter.h"
#include "resources/TextId.h"
#include "shell/DiskDetection.h"
#include "shell/LanguageChoice.h"
#include "shell/StartUp.h"
#include "shell/WriterDetection.h"

#include <array>
#include <utility>

namespace {

constexpr std::array Captions = {
    Caption{IDC_cmdSortie, TextId::QuitCaption},     Caption{IDC_cmdBackup, TextId::FirstNextCaption},
    Caption{IDC_frmAction, TextId::ActionFrame},     Caption{IDC_optRestaure, TextId::RestoreChoice},
    Caption{IDC_optBackup, TextId::BackupChoice},    Caption{IDC_frmMedium, TextId::MediumFrame},
    Caption{IDC_lblType, TextId::MediumTypeHeading}, Caption{IDC_lblDetecte, TextId::DetectedHeading},
    Caption{IDC_cmdAide, TextId::HelpCaption},
};
constexpr std::array Names = {
    Caption{IDC_removableDriveName, TextId::RemovableDiskChoice},
    Caption{IDC_externalDriveName, TextId::ExternalDiskChoice},
    Caption{IDC_loadingName, TextId::ScanCaption},
};

/// The order in which the media are looked for at the start; later it is that of their codes.
constexpr std::array StartOrder{Medium::Cd, Medium::Dvd, Medium::ExternalDisk, Medium::RemovableDisk};
static_assert(StartOrder.size() == AllMedia.size());

/// The language, the captions and the media.
constexpr int LoadingSteps = 2 + AllMedia.size();
constexpr int ActionWidthForBackupTwips = 3375;
constexpr int ActionWidthForRestoreTwips = 5775;

} // namespace

frmMain::frmMain(Application& app, Openers openers)
    : ApplicationForm(app, IDD_frmMain, L"frmMain"), openers_(std::move(openers)) {}

void frmMain::OnLoad() {
    SetCancelButton(IDC_cmdSortie);
    SetFrame(IDC_frmMedium, {IDC_lblType, IDC_lblDetecte});
    for (const Medium medium : AllMedia) {
        const MediumLine line = LineOf(medium);
        SetFrame(IDC_frmMedium, {line.option.Id(), line.isDetected.Id()});
        if (line.drives != nullptr) SetFrame(IDC_frmMedium, {line.drives->Id()});
        line.option.OnClick([this, line] { MediumClicked(line.clickProcedure); });
    }
    optBackup.OnClick([this] { optBackup_Click(); });
    optRestaure.OnClick([this] { optRestaure_Click(); });
    cmdBackup.OnClick([this] { cmdBackup_Click(); });
    cmdAide.OnClick([this] { cmdAide_Click(); });
    cmdSortie.OnClick([this] { cmdSortie_Click(); });
    fullExit_ = false;
    hasStarted_ = false;
    isOpening_ = false;
}

void frmMain::OnActivate() {
    // The window is shown first, so that the progress of its loading can be seen.
    if (std::exchange(hasStarted_, true)) return;
    Form_Load();
}

bool frmMain::OnClosing() {
    if (isOpening_) fullExit_ = true;
    return !isOpening_;
}

void frmMain::OnUnload() {
    app_.machine.messageLoop->SetPointer(Pointer::Default);
}

void frmMain::Form_Load() {
    const bool isComplete = Guarded(L"Form_Load, module frmMain", [this] { return LoadStepByStep(); });
    if (isComplete || !IsLoaded()) return;
    // A start-up that failed stays as far as it got; what is left to the user is to leave.
    cmdSortie.Enable(true);
    app_.machine.messageLoop->SetPointer(Pointer::Default);
}

/// True when every step was taken; false when the window was closed meanwhile.
bool frmMain::LoadStepByStep() {
    app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
    DisableChoices();
    pgbInit.SetRange(0, LoadingSteps);
    pgbInit.SetValue(0);
    pgbInit.Show(true);
    app_.machine.messageLoop->RunPending();
    app_.startUp->strRepRacine = ParentFolder(app_.ProgramFolder());

    InitLangue();
    if (!Progress()) return false;
    InitCaptions();
    if (!Progress()) return false;
    for (const Medium medium : StartOrder) {
        Detect(medium);
        if (!Progress()) return false;
    }

    cmdSortie.Enable(true);
    pgbInit.Show(false);
    optRestaure.Enable(true);
    optBackup.Enable(true);
    cmdBackup.Enable(true);
    optBackup.Select(IDC_optBackup, IDC_optRestaure);
    optBackup.SetFocus();
    ShowMedia();
    SelectFirstMedium();
    app_.startUp->dblEspaceDisponible = MeasureWorkDrive(app_);
    app_.machine.messageLoop->SetPointer(Pointer::Default);
    return true;
}

void frmMain::DisableChoices() {
    for (const Medium medium : AllMedia) {
        const MediumLine line = LineOf(medium);
        line.option.Enable(false);
        if (line.drives != nullptr) line.drives->Enable(false);
    }
    optRestaure.Enable(false);
    optBackup.Enable(false);
    cmdBackup.Enable(false);
}

/// Shows that one more step is done. False when the window was closed.
bool frmMain::Progress() {
    pgbInit.SetValue(pgbInit.Value() + 1);
    app_.machine.messageLoop->RunPending();
    return IsLoaded();
}

void frmMain::InitLangue() {
    Guarded(L"InitLangue, module frmMain", [this] { ChooseLanguage(app_); });
}

void frmMain::InitCaptions() {
    Guarded(L"InitCaptions, module frmMain", [this] {
        SetTitle(MainWindowTitle(app_));
        SetCaptions(Captions);
        SetNames(Names);
        for (const Medium medium : AllMedia) LineOf(medium).option.SetText(Text(LineOf(medium).captionId));
    });
}

void frmMain::Detect(Medium medium) {
    const MediumDescription& description = Describe(medium);
    switch (description.detection) {
    case MediumDetection::Writer:
        return InitGraveur(medium, description.discs.value());
    case MediumDetection::RemovableDrives:
        return InitDisqueAmovible(medium);
    case MediumDetection::UsbDrives:
        return InitDisqueExterne(medium);
    }
}

void frmMain::InitGraveur(Medium medium, DiscFamily family) {
    const bool isComplete = Guarded(L"InitGraveur, module frmMain", [&] {
        WakeDrives(app_);
        const WriterProbe probe(app_, family);
        ShowOffer(medium, probe.Offer());
        WaitForNextSecond(app_, [this] { return !IsLoaded(); });
        return true;
    });
    if (!isComplete) ShowOffer(medium, {});
}

void frmMain::InitDisqueExterne(Medium medium) {
    Guarded(L"InitDisqueExterne, module frmMain", [&] {
        const MediumOffer offer = DetectExternalDisks(app_);
        ShowOffer(medium, offer);
    });
}

void frmMain::InitDisqueAmovible(Medium medium) {
    Guarded(L"InitDisqueAmovible, module frmMain", [&] {
        const MediumOffer offer = DetectRemovableDisks(app_);
        ShowOffer(medium, offer);
    });
}

void frmMain::FillDriveList(ui::ComboBox& list, const MediumOffer& offer) {
    list.Clear();
    for (const std::wstring& root : offer.roots) {
        list.Add(root);
        if (list.Count() == 1) list.Select(0);
    }
    if (!offer.isEnabled) list.Enable(false);
}

void frmMain::ShowOffer(Medium medium, const MediumOffer& offer) {
    const MediumLine line = LineOf(medium);
    if (line.drives != nullptr) FillDriveList(*line.drives, offer);
    line.option.Enable(offer.isEnabled);
    // A medium that is gone must not stay the one that the backup goes to.
    if (!offer.isEnabled && line.option.IsChecked()) SelectMedium(std::nullopt);
    line.isDetected.SetText(Text(offer.LabelId()));
    if (const TextId toolTipId = Describe(medium).notFoundToolTipId; toolTipId != TextId::None)
        toolTips_.Set(line.option, offer.isEnabled || offer.isForbidden ? std::wstring() : Text(toolTipId));
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
    const auto first = FirstOffered([this](Medium medium) { return LineOf(medium).option.IsEnabled(); });
    if (first) SelectMedium(first);
    EnableDriveLists();
}

/// A drive list can be used for its own medium only.
void frmMain::EnableDriveLists() {
    for (const Medium medium : AllMedia) {
        const MediumLine line = LineOf(medium);
        if (line.drives != nullptr) line.drives->Enable(line.option.IsChecked());
    }
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
    const std::int16_t answerBefore = app_.usbAnswer->intReponseUSB;
    for (const Medium medium : AllMedia) {
        Detect(medium);
        if (!IsLoaded()) return;
    }
    // The external disks, the last, bring the question; a "no" takes the removable ones away as well.
    if (app_.usbAnswer->intReponseUSB == box::AnswerNo && answerBefore != box::AnswerNo) Detect(Medium::RemovableDisk);
}

void frmMain::optRestaure_Click() {
    Guarded(L"optRestaure_Click, module frmMain", [this] {
        if (!optRestaure.IsChecked()) return;
        // A click that waits for the detection was meant for a backup.
        if (std::exchange(isBackupClickHeld_, false)) app_.machine.messageLoop->SetPointer(Pointer::Default);
        MajTexteBouton();
        frmAction.SetWidth(ActionWidthForRestoreTwips);
        frmMedium.Show(false);
    });
}

void frmMain::MediumClicked(const wchar_t* procedure) {
    Guarded(procedure, [this] { EnableDriveLists(); });
}

void frmMain::cmdBackup_Click() {
    if (!IsLoaded() || isOpening_) return;
    app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
    // The detection lets messages run; it holds the writers, so the click waits for its end.
    isBackupClickHeld_ = isDetecting_;
    if (isDetecting_) return;
    isOpening_ = true;
    Guarded(L"cmdBackup_Click, module frmMain", [this] { OpenChosenWindow(); });
    isOpening_ = false;
    app_.machine.messageLoop->SetPointer(Pointer::Default);
    if (fullExit_) EndProgram();
}

void frmMain::OpenChosenWindow() {
    if (optBackup.IsChecked()) OpenBackup();
    app_.machine.messageLoop->SetPointer(Pointer::Default);
    if (optRestaure.IsChecked()) openers_.showRestore(*this);
}

void frmMain::OpenBackup() {
    const auto medium = SelectedMedium();
    if (!medium) return;
    std::optional<std::wstring> drive;
    if (const ui::ComboBox* drives = LineOf(*medium).drives) drive = drives->SelectedText();
    openers_.showBackup(*this, *medium, drive);
}

void frmMain::cmdAide_Click() {
    Guarded(L"cmdAide_Click, module frmMain", [this] { OpenHelp(app_); });
}

void frmMain::cmdSortie_Click() {
    Guarded(L"cmdSortie_Click, module frmMain", [this] {
        // The window that was opened may have gone before its opening has come to an end.
        fullExit_ = true;
        if (!isOpening_) EndProgram();
    });
}

/// The program ends with its main window.
void frmMain::EndProgram() {
    Unload();
}

std::optional<Medium> frmMain::SelectedMedium() {
    for (const Medium medium : AllMedia) {
        if (LineOf(medium).option.IsChecked()) return medium;
    }
    return std::nullopt;
}

void frmMain::SelectMedium(std::optional<Medium> medium) {
    for (const Medium other : AllMedia) {
        ui::Option& option = LineOf(other).option;
        if (medium) {
            option.SetState(other == *medium);
        } else {
            option.Clear();
        }
    }
}

frmMain::MediumLine frmMain::LineOf(Medium medium) {
    switch (medium) {
    case Medium::Cd:
        return {optCD, TextId::CdChoice, lblDetCD, nullptr, L"optCD_Click, module frmMain"};
    case Medium::Dvd:
        return {optDVD, TextId::DvdChoice, lblDetDVD, nullptr, L"optDVD_Click, module frmMain"};
    case Medium::RemovableDisk:
        return {optDisqueAmovible, TextId::RemovableDiskChoice, lblDetRemDisk, &cboDrive,
                L"optDisqueAmovible_Click, module frmMain"};
    case Medium::ExternalDisk:
        return {optDisqueExterne, TextId::ExternalDiskChoice, lblDetExtDisk, &cboDisqueExterne,
                L"optDisqueExterne_Click, module frmMain"};
    }
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}
