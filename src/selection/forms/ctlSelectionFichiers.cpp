#include "selection/forms/ctlSelectionFichiers.h"

#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/OperatingSystem.h"
#include "platform/Processes.h"
#include "platform/Text.h"
#include "resources/TextId.h"

#include <utility>

namespace {

constexpr std::array Captions = {
    Caption{IDC_frmFileView, TextId::FilesFrame},
    Caption{IDC_cmdAjouterFichier, TextId::AddFilesCaption},
    Caption{IDC_cmdAjouterRep, TextId::AddFolderCaption},
    Caption{IDC_frmSauvegardeOKR, TextId::PredefinedSetsFrame},
    Caption{IDC_frmDView, TextId::SelectionFrame},
    Caption{IDC_cmdOuvrirExplorer, TextId::OpenExplorerCaption},
    Caption{IDC_cmdEffacerTouteListe, TextId::ClearListCaption},
    Caption{IDC_cmdEffacerFichierListe, TextId::RemoveItemCaption},
};
constexpr std::array Names = {Caption{IDC_lblSelectRep, TextId::FolderKind},
                              Caption{IDC_lblSelectFichier, TextId::FileKind}};

constexpr int NumberWidthTwips = 900;
constexpr int TypeWidthTwips = 1500;
constexpr int ScrollBarWidthTwips = 360;

} // namespace

ctlSelectionFichiers::ctlSelectionFichiers(Application& app, SelectionEvents& host)
    : ApplicationForm(app, IDD_ctlSelectionFichiers, L"frmBackupCD"), host_(host), list_(NewList()),
      browser_(*app.machine.files) {}

std::unique_ptr<SelectionList> ctlSelectionFichiers::NewList() {
    SelectionView& view = *this;
    return std::make_unique<SelectionList>(app_, host_, view);
}

void ctlSelectionFichiers::OnLoad() {
    Guarded(L"Form_Load, module frmBackupCD", [this] {
        list_ = NewList();
        isEnabled_ = true;
        InitCaptions();
        ConnectControls();
        for (const std::wstring& choice : DriveChoices(app_)) dlbSelectLecteur.Add(choice);
        list_->LoadSets();
        OpenStartFolder();
    });
}

void ctlSelectionFichiers::InitCaptions() {
    Guarded(L"InitCaptions, module frmBackupCD", [this] {
        SetCaptions(Captions);
        SetNames(Names);
        for (std::size_t index = 0; index < SetTable.size(); ++index) {
            const PredefinedSet& set = SetTable[index];
            chkSauvOKR[index].SetText(set.captionId == TextId::None ? set.caption : Text(set.captionId));
        }
        lvFichRep.Attach(*this, false);
        lvFichRep.AddColumn(Text(TextId::NumberHeader), NumberWidthTwips);
        const int rest = lvFichRep.Bounds().width - NumberWidthTwips - TypeWidthTwips - ScrollBarWidthTwips;
        lvFichRep.AddColumn(Text(TextId::PathHeader), rest);
        lvFichRep.AddColumn(Text(TextId::TypeHeader), TypeWidthTwips);
        lvFichRep.AddHiddenColumn();
    });
}

void ctlSelectionFichiers::ConnectControls() {
    dlbSelectLecteur.OnSelect([this] { dlbSelectLecteur_Change(); });
    dlbSelectRep.Attach();
    dlbSelectRep.OnOpen([this] { dlbSelectRep_Click(); });
    flbSelectFichier.OnDoubleClick([this] { AjouterFichier(L"flbSelectFichier_DblClick, module frmBackupCD"); });
    fileKeys_.On(VK_RETURN, [this] { AjouterFichier(L"flbSelectFichier_DblClick, module frmBackupCD"); });
    cmdAjouterFichier.OnClick([this] { AjouterFichier(L"cmdAjouterFichier_Click, module frmBackupCD"); });
    cmdAjouterRep.OnClick([this] { cmdAjouterRep_Click(); });
    for (std::int32_t index = 0; index < SetCount; ++index) {
        chkSauvOKR[static_cast<std::size_t>(index)].OnClick([this, index] { list_->ClickBox(index); });
        BoxChanged(index);
    }
    lvFichRep.OnDrop([this](const std::vector<std::wstring>& paths) { list_->AddDropped(paths); });
    cmdOuvrirExplorer.OnClick([this] { cmdOuvrirExplorer_Click(); });
    cmdEffacerTouteListe.OnClick([this] { list_->EffacerTouteListe(); });
    cmdEffacerFichierListe.OnClick([this] { RemoveSelectedRow(); });
    rowKeys_.On(VK_DELETE, [this] { RemoveSelectedRow(); });
}

const std::shared_ptr<clsColFileInfo>& ctlSelectionFichiers::ArrayFichier() const {
    return list_->ArrayFichier();
}

void ctlSelectionFichiers::SetArrayFichier(std::shared_ptr<clsColFileInfo> collection) {
    list_->SetArrayFichier(std::move(collection));
}

void ctlSelectionFichiers::SetEnabled(bool isEnabled) {
    Guarded(L"Enabled, module frmBackupCD", [&] {
        isEnabled_ = isEnabled;
        for (ui::Control* control : std::initializer_list<ui::Control*>{
                 &frmFileView, &dlbSelectLecteur, &dlbSelectRep, &flbSelectFichier, &cmdAjouterFichier, &cmdAjouterRep,
                 &frmSauvegardeOKR, &frmDView, &lvFichRep, &cmdOuvrirExplorer, &cmdEffacerTouteListe,
                 &cmdEffacerFichierListe})
            control->Enable(isEnabled);
        Enable(isEnabled);
    });
}

bool ctlSelectionFichiers::IsWinVista() const {
    return app_.machine.operatingSystem->Version().IsVistaOrLater();
}

void ctlSelectionFichiers::dlbSelectLecteur_Change() {
    Guarded(L"dlbSelectLecteur_Change, module frmBackupCD", [this] {
        const std::wstring drive = DriveOfChoice(dlbSelectLecteur.SelectedText());
        if (IsFloppyDrive(drive)) return;
        Guarded(L"dlbSelectLecteur_Change, module frmBackupCD", [&] { OpenFolder(drive); });
        // A drive that cannot be read is not the one whose folders are shown.
        ShowDrive();
    });
}

void ctlSelectionFichiers::dlbSelectRep_Click() {
    Guarded(L"dlbSelectRep_Click, module frmBackupCD", [this] {
        const auto row = static_cast<std::size_t>(dlbSelectRep.Selected());
        if (row < browser_.Folders().size()) OpenFolder(browser_.Folders()[row].path);
    });
    // What is highlighted is what would be added, also after a folder that could not be opened.
    if (!browser_.Path().empty()) dlbSelectRep.Select(static_cast<int>(browser_.OpenIndex()));
}

void ctlSelectionFichiers::dlbSelectRep_Change() {
    Guarded(L"dlbSelectRep_Change, module frmBackupCD", [this] { flbSelectFichier.SetItems(browser_.FileNames()); });
}

void ctlSelectionFichiers::OpenStartFolder() {
    const auto start = StartFolder(app_);
    if (start || app_.machine.files->FolderExists(app_.ProgramFolder()))
        OpenFolder(start.value_or(app_.ProgramFolder()));
    ShowDrive();
}

void ctlSelectionFichiers::OpenFolder(const std::wstring& path) {
    browser_.Open(path);
    std::vector<ui::FolderLine> lines;
    for (const BrowsedFolder& folder : browser_.Folders())
        lines.push_back({folder.name, folder.level, lines.size() <= browser_.OpenIndex()});
    dlbSelectRep.SetLines(std::move(lines), static_cast<int>(browser_.OpenIndex()));
    dlbSelectRep_Change();
}

void ctlSelectionFichiers::ShowDrive() {
    const std::wstring drive = UpperCase(browser_.Path().substr(0, 2));
    for (int row = 0; row < dlbSelectLecteur.Count(); ++row) {
        if (DriveOfChoice(dlbSelectLecteur.Item(row)) == drive) dlbSelectLecteur.Select(row);
    }
}

void ctlSelectionFichiers::cmdAjouterRep_Click() {
    Guarded(L"cmdAjouterRep_Click, module frmBackupCD", [this] {
        const std::wstring parent = list_->AddFolder(browser_.Path());
        if (!parent.empty()) OpenFolder(parent);
    });
}

void ctlSelectionFichiers::AjouterFichier(const wchar_t* procedure) {
    Guarded(procedure, [this] {
        std::vector<std::wstring> names;
        for (const int row : flbSelectFichier.SelectedRows())
            names.push_back(browser_.FileNames().at(static_cast<std::size_t>(row)));
        list_->AddFiles(browser_.Path(), names);
    });
}

void ctlSelectionFichiers::RemoveSelectedRow() {
    list_->EffacerFichierListe(lvFichRep.Selected());
}

void ctlSelectionFichiers::cmdOuvrirExplorer_Click() {
    Guarded(L"cmdOuvrirExplorer_Click, module frmBackupCD", [this] {
        app_.machine.processes->Start(app_.machine.environment->Variable(L"Windir").value_or(L"") + L"\\explorer.exe");
    });
}

void ctlSelectionFichiers::RowsChanged(std::int32_t selected, std::int32_t shown) {
    lvFichRep.RowsChanged();
    if (lvFichRep.Selected() != selected) lvFichRep.Select(selected);
    if (shown >= 0) lvFichRep.ShowRow(shown);
}

void ctlSelectionFichiers::BoxChanged(std::int32_t index) {
    const SetBox& state = list_->Box(index);
    ui::CheckButton& shown = chkSauvOKR[static_cast<std::size_t>(index)];
    shown.SetState(static_cast<int>(state.state));
    shown.Enable(state.isEnabled);
}

std::wstring ctlSelectionFichiers::Cell(int row, int column) const {
    const SelectionRow& item = list_->Row(row);
    switch (column) {
    case 0:
        return std::to_wstring(row + 1);
    case 1:
        return item.Text();
    case 2:
        return app_.Text(item.isFolder ? TextId::FolderKind : TextId::FileKind);
    default:
        return item.setIndex == NoSet ? std::wstring() : std::to_wstring(item.setIndex);
    }
}

ui::RowStyle ctlSelectionFichiers::Style(int row) const {
    const SelectionRow& item = list_->Row(row);
    return {static_cast<COLORREF>(item.color), item.IsBold()};
}
