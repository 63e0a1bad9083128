#include "restore/forms/frmRestaureCD.h"

#include "archive/DriveLines.h"
#include "archive/MediumPair.h"
#include "archive/WorkFolder.h"
#include "core/ArchiveValues.h"
#include "core/UserValues.h"
#include "platform/MessageBoxes.h"
#include "resources/TextId.h"
#include "ui/Menu.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::array Captions = {
    Caption{IDC_cmdLancerRestauration, TextId::StartRestoreCaption},
    Caption{IDC_cmdToutDeselectionner, TextId::DeselectAllCaption},
    Caption{IDC_cmdToutSelectionner, TextId::SelectAllCaption},
    Caption{IDC_cmdFermer, TextId::CloseCaption},
};
constexpr std::array Names = {Caption{IDC_lblListName, TextId::PathHeader},
                              Caption{IDC_lblDriveName, TextId::DiscCaption}};

constexpr int PathColumn = 0;
constexpr int ScrollBarWidthTwips = 400;
// A burst of device messages is over within this time; the lists are right well within half a second.
constexpr UINT RefreshDelayMilliseconds = 200;

} // namespace

LRESULT CALLBACK modFonctionsCommunes::MyWindowProcRestaureCD(HWND hwnd, UINT uMsg, WPARAM wParam, LPARAM lParam) {
    const ui::WindowProcedureHook* hook = ui::WindowProcedureHook::Of(hwnd);
    if (hook == nullptr) return DefWindowProcW(hwnd, uMsg, wParam, lParam);
    if (uMsg == WM_DEVICECHANGE) {
        if (auto* form = dynamic_cast<frmRestaureCD*>(ui::Form::Of(hwnd)); form != nullptr) form->DevicesChanged();
    }
    return hook->CallSaved(uMsg, wParam, lParam);
}

frmRestaureCD::frmRestaureCD(Application& app, MainWindow& parent)
    : ApplicationForm(app, IDD_frmRestaureCD, L"frmRestaureCD"), parent_(parent),
      refresh_(*this, [this] { RefreshLists(); }) {}

std::wstring frmRestaureCD::ShownRows::ToolTip(int row) const {
    return form_.rows_.At(row).isRestored ? form_.Text(TextId::RestoredMark) : std::wstring();
}

void frmRestaureCD::OnLoad() {
    SetCancelButton(IDC_cmdFermer);
    SetAccelerators({{FVIRTKEY, VK_F5, IDC_mnuRaffraichir_Rafraichir}});
    On(IDC_mnuRaffraichir_Rafraichir, BN_CLICKED, [this] { mnuRaffraichir_Rafraichir_Click(); });
    lstDrive.OnSelect([this] { lstDrive_Click(); });
    lvFichiersRepertoires.OnTick([this](int row) { lvFichiersRepertoires_ItemCheck(row); });
    cmdToutSelectionner.OnClick([this] { cmdToutSelectionner_Click(); });
    cmdToutDeselectionner.OnClick([this] { cmdToutDeselectionner_Click(); });
    cmdLancerRestauration.OnClick([this] { cmdLancerRestauration_Click(); });
    cmdFermer.OnClick([this] { cmdFermer_Click(); });
    rows_.Clear();
    shownMedium_ = {};
    tickMemory_.Clear();
    chosenRoot_.clear();
    driveLines_.clear();
    isBusy_ = false;
    isRestoring_ = false;
    Form_Load();
}

void frmRestaureCD::Form_Load() {
    Guarded(L"Form_Load, module frmRestaureCD", [this] {
        hook_.Install(Handle(), modFonctionsCommunes::MyWindowProcRestaureCD);
        InitCaptions();
        ResetWorkFolder(app_);
        MAJListeCDetUSB();
    });
}

void frmRestaureCD::InitCaptions() {
    Guarded(L"InitCaptions, module frmRestaureCD", [this] {
        SetTitle(Text(TextId::RestoreTitle));
        SetCaptions(Captions);
        SetNames(Names);
        ui::AddMenu(*this, Text(TextId::RefreshCaption),
                    {{IDC_mnuRaffraichir_Rafraichir, Text(TextId::RefreshCaption) + L"\tF5"}});
        lvFichiersRepertoires.Attach(shownRows_, true);
        AddColumns();
        anchors_.Take({{IDC_lstDrive, true, true, true, false},
                       {IDC_lvFichiersRepertoires, true, true, true, true},
                       {IDC_cmdToutSelectionner, true, false, false, true},
                       {IDC_cmdToutDeselectionner, true, false, false, true},
                       {IDC_cmdLancerRestauration, false, false, true, true},
                       {IDC_cmdFermer, false, false, true, true}});
    });
}

void frmRestaureCD::AddColumns() {
    int restTwips = lvFichiersRepertoires.Bounds().width - ScrollBarWidthTwips;
    for (const RestoreRows::Column& column : RestoreRows::Columns()) restTwips -= column.widthTwips;
    for (const RestoreRows::Column& column : RestoreRows::Columns()) {
        if (column.headerId == TextId::None) {
            lvFichiersRepertoires.AddHiddenColumn();
        } else {
            lvFichiersRepertoires.AddColumn(Text(column.headerId),
                                            column.widthTwips != 0 ? column.widthTwips : restTwips);
        }
    }
}

std::optional<LRESULT> frmRestaureCD::OnMessage(UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_GETMINMAXINFO) {
        anchors_.Limit(*reinterpret_cast<MINMAXINFO*>(lParam));
        return 0;
    }
    if (message == WM_SIZE) {
        anchors_.Apply();
        lvFichiersRepertoires.FillWidth(PathColumn);
    }
    return std::nullopt;
}

bool frmRestaureCD::OnClosing() {
    return !isRestoring_;
}

void frmRestaureCD::OnUnload() {
    Form_Unload();
}

void frmRestaureCD::Form_Unload() {
    refresh_.Cancel();
    Guarded(L"Form_Unload, module frmRestaureCD", [this] { RemoveWorkFolder(app_); });
    hook_.Remove();
}

void frmRestaureCD::DevicesChanged() {
    refresh_.Request(RefreshDelayMilliseconds);
}

/// Brings the drive list up to date; the user's drive stays selected as long as it is listed, and is again as soon as
/// it comes back.
void frmRestaureCD::MAJListeCDetUSB() {
    Guarded(L"MAJListeCDetUSB, module frmRestaureCD", [this] {
        std::vector<std::wstring> lines = DriveLines(app_);
        if (lines == driveLines_) return;
        const std::wstring root = SelectedRoot();
        driveLines_ = std::move(lines);
        lstDrive.SetItems(driveLines_);
        if (!SelectRoot(chosenRoot_)) SelectRoot(root);
    });
}

std::wstring frmRestaureCD::SelectedRoot() const {
    return RootOfLine(lstDrive.Item(lstDrive.Selected()));
}

/// Selects a drive's line. Gives whether it has one.
bool frmRestaureCD::SelectRoot(const std::wstring& root) {
    if (root.empty()) return false;
    const auto line = std::find_if(driveLines_.begin(), driveLines_.end(),
                                   [&](const std::wstring& candidate) { return RootOfLine(candidate) == root; });
    if (line == driveLines_.end()) return false;
    lstDrive.Select(static_cast<int>(line - driveLines_.begin()));
    return true;
}

void frmRestaureCD::lstDrive_Click() {
    if (std::exchange(isBusy_, true)) return;
    Guarded(L"lstDrive_Click, module frmRestaureCD", [this] {
        if (lstDrive.Selected() < 0) {
            MAJListeCDetUSB();
            lstDrive.Select(0);
        }
        chosenRoot_ = SelectedRoot();
        MAJListeFich();
        TickAll(true);
    });
    isBusy_ = false;
}

/// Follows the devices: what the user ticked stays as long as the same medium is there, and comes back with it.
void frmRestaureCD::RefreshLists() {
    if (isRestoring_) return;
    if (isBusy_) {
        DevicesChanged();
        return;
    }
    BringListsUpToDate();
}

/// Gives whether it could be done; a failure is reported.
bool frmRestaureCD::BringListsUpToDate() {
    isBusy_ = true;
    const bool isDone = Guarded(L"RefreshLists, module frmRestaureCD", [this] {
        MAJListeCDetUSB();
        if (lstDrive.Selected() < 0) lstDrive.Select(0);
        FollowMedium(LookAtChosenMedium());
        return true;
    });
    isBusy_ = false;
    return isDone;
}

void frmRestaureCD::FollowMedium(InsertedMedium medium) {
    if (medium.print == shownMedium_) return;
    ShowMedium(std::move(medium));
    if (!tickMemory_.GiveBack(shownMedium_, rows_)) rows_.TickAll(true);
    lvFichiersRepertoires.Redraw();
    EnableLaunch();
}

void frmRestaureCD::MAJListeFich() {
    ShowMedium(LookAtChosenMedium());
}

InsertedMedium frmRestaureCD::LookAtChosenMedium() {
    const std::wstring root = SelectedRoot();
    FinishExchangeIfPossible(app_, root);
    return LookAtMedium(app_, root);
}

void frmRestaureCD::ShowMedium(InsertedMedium medium) {
    tickMemory_.Keep(shownMedium_, rows_);
    rows_.Clear();
    lvFichiersRepertoires.RowsChanged();
    shownMedium_ = medium.print;
    Guarded(L"MAJListeFich, module frmRestaureCD", [&] { FillRows(medium); });
    for (ui::Button* button : {&cmdLancerRestauration, &cmdToutSelectionner, &cmdToutDeselectionner})
        button->Enable(rows_.HoldItems());
    lvFichiersRepertoires.RowsChanged();
}

void frmRestaureCD::FillRows(const InsertedMedium& medium) {
    switch (medium.print.content) {
    case InsertedMedium::Content::NoBackup:
        rows_.ShowNoBackup(Text(medium.isCdRom ? TextId::NoBackupOnCdRom : TextId::NoBackupOnDisk));
        lvFichiersRepertoires.WidenFor(PathColumn, rows_.Cell(0, PathColumn));
        return;
    case InsertedMedium::Content::OlderFormat:
        app_.ShowMessage(TextId::OlderBackupFormat, TextId::BackupTitle, box::Critical);
        return;
    case InsertedMedium::Content::Backup:
        break;
    }
    if (medium.failure) throw *medium.failure;
    app_.archive->archiveSizeBytes = static_cast<std::int64_t>(medium.print.archiveSizeBytes);
    std::vector<ControlFileRecord> records;
    try {
        ReadControlFile(medium.controlFile, app_.user->strProfilUtilisateur, records);
    } catch (const RuntimeError&) {
        // What is damaged is told when all is listed that can still be restored.
        rows_.Add(app_, std::move(records));
        lvFichiersRepertoires.RowsChanged();
        throw;
    }
    rows_.Add(app_, std::move(records));
}

void frmRestaureCD::ShowNoMedium() {
    tickMemory_.Keep(shownMedium_, rows_);
    rows_.Clear();
    shownMedium_ = {};
    lvFichiersRepertoires.RowsChanged();
    for (ui::Button* button : {&cmdLancerRestauration, &cmdToutSelectionner, &cmdToutDeselectionner})
        button->Enable(false);
}

void frmRestaureCD::lvFichiersRepertoires_ItemCheck(int row) {
    Guarded(L"lvFichiersRepertoires_ItemCheck, module frmRestaureCD", [&] {
        if (isRestoring_) return;
        chosenRoot_ = SelectedRoot();
        rows_.Toggle(row);
        lvFichiersRepertoires.RedrawRow(row);
        EnableLaunch();
    });
}

void frmRestaureCD::cmdToutSelectionner_Click() {
    Guarded(L"cmdToutSelectionner_Click, module frmRestaureCD", [this] {
        chosenRoot_ = SelectedRoot();
        TickAll(true);
    });
}

void frmRestaureCD::cmdToutDeselectionner_Click() {
    Guarded(L"cmdToutDeselectionner_Click, module frmRestaureCD", [this] {
        chosenRoot_ = SelectedRoot();
        TickAll(false);
    });
}

void frmRestaureCD::TickAll(bool isTicked) {
    rows_.TickAll(isTicked);
    lvFichiersRepertoires.Redraw();
    EnableLaunch();
}

void frmRestaureCD::EnableLaunch() {
    cmdLancerRestauration.Enable(rows_.IsAnyTicked());
}

void frmRestaureCD::mnuRaffraichir_Rafraichir_Click() {
    if (isRestoring_ || std::exchange(isBusy_, true)) return;
    Guarded(L"mnuRaffraichir_Rafraichir_Click, module frmRestaureCD", [this] {
        MAJListeCDetUSB();
        // A drive that is no longer listed takes its rows with it.
        if (lstDrive.Selected() < 0)
            ShowNoMedium();
        else if (SelectedRoot() != shownMedium_.root)
            FollowMedium(LookAtChosenMedium());
    });
    isBusy_ = false;
}

void frmRestaureCD::cmdFermer_Click() {
    Guarded(L"cmdFermer_Click, module frmRestaureCD", [this] {
        RemoveWorkFolder(app_);
        Unload();
    });
}
