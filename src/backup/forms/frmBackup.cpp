#include "backup/forms/frmBackup.h"

#include "backup/DriveEntries.h"
#include "backup/VolumeLabel.h"
#include "core/NumberFormat.h"
#include "core/SpaceValues.h"
#include "discutil/forms/frmEffacerCDRW.h"
#include "discutil/forms/frmInfoDisque.h"
#include "platform/Drives.h"
#include "platform/Locale.h"
#include "platform/MessageLoop.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"
#include "shell/DiskDetection.h"

#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr std::array Captions = {
    Caption{IDC_lblVitesse, TextId::WriteSpeedCaption},
    Caption{IDC_lblNomVolume, TextId::DiscTitleCaption},
    Caption{IDC_cmdInfoDisque, TextId::DiscInformationCaption},
    Caption{IDC_cmdEffacerDisque, TextId::EraseDiscCaption},
    Caption{IDC_lblEspaceRequis, TextId::RequiredSpace},
    Caption{IDC_lblEspaceDispo, TextId::AvailableSpace},
    Caption{IDC_lblEspaceTravail, TextId::WorkSpace},
    Caption{IDC_cmdPrecedent, TextId::BackCaption},
    Caption{IDC_cmdQuitter, TextId::QuitCaption},
    Caption{IDC_cmdLancer, TextId::StartBackupCaption},
    Caption{IDC_fProgression, TextId::ProgressFrame},
    Caption{IDC_lblStatutGravure, TextId::WritingCaption},
    Caption{IDC_lblStatutGraveur, TextId::DiscTotalCaption},
    Caption{IDC_cmdStopWrite, TextId::StopCaption},
};

constexpr ui::PlaceDialogUnits SelectionPlace{5, 4, 523, 235};
constexpr ui::PlaceDialogUnits ScanPlace{145, 254, 385, 282};
constexpr unsigned ClockMilliseconds = 1000;

} // namespace

frmBackup::frmBackup(Application& app, PasswordQuestion askPassword)
    : ApplicationForm(app, IDD_frmBackup, L"frmBackupCD"), askPassword_(std::move(askPassword)),
      watch_(app, *this, [this](const std::wstring& path) { return ctlSelectionFichiers_.SpaceOf(path); }),
      ctlSelectionFichiers_(app, watch_), ctlScan_(app), discs_(app, state_, *this),
      steps_(app,
             {*this, [this] { return ctlSelectionFichiers_.ArrayFichier(); }, [this] { return askPassword_(*this); }}),
      run_(app, state_, *this, steps_, discs_) {}

void frmBackup::SetDrive(const std::wstring& strDrive) {
    state_.mstrDrive = strDrive;
    state_.mstrDrvPreSelect = strDrive;
}

void frmBackup::OnLoad() {
    // What was picked in an hour must not go with a key that is pressed by habit.
    IgnoreEscape();
    SetFrame(IDC_fParametres,
             {IDC_cmbGraveur, IDC_lblVitesse, IDC_cmbSpeed, IDC_lblNomVolume, IDC_txtDiscLabel, IDC_cmdInfoDisque,
              IDC_cmdEffacerDisque, IDC_lblEspaceRequis, IDC_lblEspaceDispo, IDC_lblEspaceTravail});
    progress_.LayOut(cmdPrecedent, cmdLancer, cmdQuitter, stBarDataWriter);
    stBarDataWriter.LayOut();
    ConnectControls();
    clock_.Start(ClockMilliseconds);
    // Before the selection is loaded, because its predefined sets count at once.
    app_.space->requiredSpace = {};
    app_.space->availableSpace = {};
    HostSelection();
}

void frmBackup::ConnectControls() {
    cmbGraveur.OnSelect([this] { cmbGraveur_Click(); });
    cmbSpeed.OnSelect([this] { cmbSpeed_Click(); });
    On(IDC_txtDiscLabel, EN_KILLFOCUS, [this] { discs_.SettleLabel(); });
    cmdInfoDisque.OnClick([this] { cmdInfoDisque_Click(); });
    cmdEffacerDisque.OnClick([this] { cmdEffacerDisque_Click(); });
    cmdPrecedent.OnClick([this] { cmdPrecedent_Click(); });
    cmdQuitter.OnClick([this] { cmdQuitter_Click(); });
    cmdLancer.OnClick([this] { run_.Launch(); });
    progress_.cmdStopWrite.OnClick([this] { cmdStopWrite_Click(); });
}

void frmBackup::HostSelection() {
    ctlSelectionFichiers_.CreateChild(*this, SelectionPlace);
    ctlSelectionFichiers_.PutFirst();
}

void frmBackup::OnActivate() {
    Guarded(L"Form_Activate, module frmBackupCD", [this] {
        if (state_.phase.IsAt(RunPhase::Opening)) {
            state_.phase.Enter(RunPhase::Idle);
            SetUp();
        }
        if (IsLoaded()) watch_.CheckWorkSpace();
    });
}

bool frmBackup::OnClosing() {
    return !state_.phase.IsRunning() && !state_.phase.IsOperationInProgress();
}

void frmBackup::OnUnload() {
    state_.phase.Enter(RunPhase::Closed);
    Guarded(L"Form_Unload, module frmBackupCD", [this] {
        // A writer that is still at work lets messages run until it has stopped, which takes a drive up to minutes.
        Enable(false);
        app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
        discs_.ReleaseWriter();
        state_.awake.reset();
        eraseWindow_ = nullptr;
        parent_ = nullptr;
    });
    clock_.Stop();
    ctlScan_.Unload();
    ctlSelectionFichiers_.Unload();
    app_.machine.messageLoop->SetPointer(Pointer::Default);
}

void frmBackup::InitCaptions() {
    Guarded(L"InitCaptions, module ctlScan", [this] {
        SetTitle(Text(TextId::BackupTitle));
        SetCaptions(Captions);
        for (SpaceLabel* label : {&lblEspaceRequis, &lblEspaceDispo, &lblEspaceTravail}) label->Forget();
        stBarDataWriter.ShowToolTips(app_);
    });
}

void frmBackup::SetUp() {
    app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
    InitCaptions();
    ShowTitle();
    stBarDataWriter.ShowTime(app_);
    if (IsDisc(state_.miTypeMedia)) {
        SetUpDiscs();
    } else {
        SetUpDisks();
    }
    app_.machine.messageLoop->SetPointer(Pointer::Default);
}

void frmBackup::ShowTitle() {
    const std::wstring label = Text(Describe(state_.miTypeMedia).labelId);
    SetTitle(Title() + L" " + label + L" - Version " + VersionText());
    fParametres.SetText(label);
}

/// The scan's progress stands in the settings' place until the writer is known.
void frmBackup::SetUpDiscs() {
    constexpr std::int16_t steps = 3;
    fParametres.Show(false);
    ctlScan_.CreateChild(*this, ScanPlace);
    ctlScan_.SetMIN(0);
    ctlScan_.SetMAX(steps);
    Refresh();
    Guarded(L"Form_Activate, module frmBackupCD", [this] { discs_.CreateWriter(); });
    ctlScan_.SetValue(1);
    LoadSpeedCombo();
    ctlScan_.SetValue(2);
    txtDiscLabel.SetText(DefaultVolumeLabel(app_));
    lists_.FillWriters();
    ctlScan_.SetValue(steps);
    ctlScan_.Refresh();
    ctlScan_.Unload();
    fParametres.Show(true);
    if (cmbGraveur.Count() > 0) {
        cmbGraveur_Click();
    } else {
        discs_.RefreshDiscInfo();
    }
}

void frmBackup::LoadSpeedCombo() {
    Guarded(L"ChargerComboVitesse, module frmBackupCD", [this] {
        ActiverControles(false);
        app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
        lists_.FillSpeeds();
        app_.machine.messageLoop->SetPointer(Pointer::Default);
        ActiverControles(true);
    });
}

void frmBackup::SetUpDisks() {
    const MediumDescription& medium = Describe(state_.miTypeMedia);
    switch (medium.detection) {
    case MediumDetection::Writer:
        throw RuntimeError(ErrorNumber::InvalidCall);
    case MediumDetection::RemovableDrives:
        LoadComboDrive();
        break;
    case MediumDetection::UsbDrives:
        LoadComboDriveUSB();
        break;
    }
    if (medium.isDriveChosenInList && cmbGraveur.Count() > 0) state_.mstrDrive = DrivePart(cmbGraveur.SelectedText());
    RemoveControls();
    discs_.RefreshDiscInfo();
    AfficherEspaces();
}

void frmBackup::LoadComboDrive() {
    Guarded(L"LoadComboDrive, module frmBackupCD", [this] { FillDrives(DetectRemovableDisks(app_).roots); });
}

void frmBackup::LoadComboDriveUSB() {
    Guarded(L"LoadComboDriveUSB, module frmBackupCD", [this] { FillDrives(DetectExternalDisks(app_).roots); });
}

void frmBackup::FillDrives(const std::vector<std::wstring>& roots) {
    std::vector<std::wstring> entries;
    for (const std::wstring& root : roots)
        entries.push_back(DriveEntry(root, Text(Describe(state_.miTypeMedia).labelId)));
    cmbGraveur.Clear();
    for (const std::wstring& entry : entries) cmbGraveur.Add(entry);
    cmbGraveur.Select(EntryToSelect(entries, state_.mstrDrvPreSelect));
}

void frmBackup::RemoveControls() {
    Guarded(L"RemoveControls, module frmBackupCD", [this] {
        for (ui::Control* control : {static_cast<ui::Control*>(&cmbSpeed), static_cast<ui::Control*>(&txtDiscLabel),
                                     static_cast<ui::Control*>(&cmdEffacerDisque)}) {
            control->Enable(false);
            control->Show(false);
        }
        lblVitesse.Show(false);
        lblNomVolume.Show(false);
    });
}

std::wstring frmBackup::GetEspaceTotalUSB() {
    return Guarded(L"GetEspaceTotalUSB, module frmBackupCD", [this] {
        const double totalBytes = app_.machine.drives->Space(DrivePart(cmbGraveur.SelectedText())).totalBytes;
        app_.space->availableSpace = Currency::FromDouble(totalBytes);
        return FormatNumber(std::nearbyint(totalBytes * 1000) / 1000, L"# ### ###",
                            app_.machine.locale->DecimalSeparator());
    });
}

void frmBackup::cmbGraveur_Click() {
    Guarded(L"cmbGraveur_Click, module frmBackup", [this] {
        if (IsDisc(state_.miTypeMedia)) {
            if (discs_.Writer() == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet);
            discs_.Writer()->SelectWriter(cmbGraveur.Selected());
        } else if (Describe(state_.miTypeMedia).isDriveChosenInList) {
            state_.mstrDrive = DrivePart(cmbGraveur.SelectedText());
            GetEspaceTotalUSB();
        }
        AfficherEspaceDispo();
        discs_.RefreshDiscInfo();
        discs_.CheckKind();
    });
}

void frmBackup::cmbSpeed_Click() {
    Guarded(L"cmbSpeed_Click, module frmBackupCD", [this] {
        if (discs_.Writer() == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet);
        if (const auto speed = SelectedSpeed()) discs_.Writer()->SetWriteSpeed(*speed);
    });
}

/// What became of the writers while the window could not show it.
void frmBackup::CatchUp() {
    if (!state_.phase.IsAt(RunPhase::Idle) || !IsEnabled()) return;
    if (std::exchange(areWritersDue_, false)) {
        lists_.FillWriters();
        if (cmbGraveur.Count() > 0 && discs_.Writer()->CurrentWriter() < 0) cmbGraveur_Click();
    }
    if (std::exchange(areSpeedsDue_, false)) LoadSpeedCombo();
}

void frmBackup::cmdInfoDisque_Click() {
    Guarded(L"cmdInfoDisque_Click, module frmBackupCD", [this] {
        frmInfoDisque window(app_);
        window.SetParent(discs_);
        window.ShowModal(this);
        if (IsLoaded()) discs_.RefreshDiscInfo();
    });
}

void frmBackup::cmdEffacerDisque_Click() {
    Guarded(L"cmdEffacerCD_Click, module frmBackupCD", [this] { discs_.EffacerDisque(); });
}

void frmBackup::ShowEraseWindow() {
    frmEffacerCDRW window(app_);
    window.SetParent(discs_);
    eraseWindow_ = &window;
    window.ShowModal(this);
    eraseWindow_ = nullptr;
}

void frmBackup::ShowEraseProgress(std::int16_t percent) {
    if (eraseWindow_ != nullptr) eraseWindow_->SetEffacementProgress(percent);
}

void frmBackup::cmdPrecedent_Click() {
    Guarded(L"cmdPrecedent_Click, module frmBackupCD", [this] {
        if (state_.phase.IsRunning()) return;
        parent_->SetFullExit(false);
        app_.space->requiredSpace = {};
        Unload();
    });
}

void frmBackup::cmdQuitter_Click() {
    Guarded(L"cmdQuitter_Click, module frmBackupCD", [this] {
        if (!state_.phase.IsRunning()) EndProgram();
    });
}

void frmBackup::EndProgram() {
    if (parent_ != nullptr) parent_->SetFullExit(true);
    Unload();
}

void frmBackup::cmdStopWrite_Click() {
    Guarded(L"cmdStopWrite_Click, module frmBackupCD", [this] { run_.Stop(); });
}
