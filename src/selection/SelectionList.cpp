#include "selection/SelectionList.h"

#include "core/Application.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/MessageLoop.h"
#include "resources/TextId.h"
#include "selection/ItemSpace.h"
#include "selection/PathRules.h"
#include "shell/ErrorReport.h"
#include "shell/UserProfile.h"

#include <algorithm>
#include <utility>

namespace {

bool IsFolderPattern(const std::wstring& path) {
    return path.find(L'*') != std::wstring::npos && path.find(L'.') == std::wstring::npos;
}

} // namespace

SelectionList::SelectionList(Application& app, SelectionEvents& events, SelectionView& view)
    : app_(app), events_(events), view_(view), work_(app, [this] { ShowChanges(); }), leftOut_(app),
      sets_(app, content_, work_, leftOut_) {
    content_.collection = std::make_shared<clsColFileInfo>(app);
}

/// Runs a procedure's steps under its label, and shows afterwards what they changed.
template<typename Steps>
void SelectionList::Change(const wchar_t* procedure, Steps&& steps) {
    if (!work_.IsRunning()) content_.rows.Select(view_.SelectedRow());
    work_.Run([&] { Guarded(app_, procedure, steps); });
    if (work_.IsRunning()) return;
    ShowChanges();
    leftOut_.Report();
}

void SelectionList::ShowChanges() {
    view_.RowsChanged(content_.rows.Selected(), std::exchange(content_.shownRow, -1));
    events_.OnShowChanges();
}

void SelectionList::LoadSets() {
    Change(L"Form_Load, module frmBackupCD", [&] {
        const Files& files = *app_.machine.files;
        const std::wstring transferList = sets_.TransferList();
        const bool isTransfer = files.FileExists(transferList);
        if (!isTransfer) {
            for (std::int32_t index = 0; index < SetCount; ++index) {
                if (!sets_.IsInstalled(index)) continue;
                EnableBox(index, true);
                SetBoxState(index, BoxState::Checked);
            }
        }
        for (std::int32_t index = 0; index < SetCount; ++index) {
            if (Box(index).state == BoxState::Unchecked || ItemsAdded(index) != 0) continue;
            EnableBox(index, false);
            SetBoxQuietly(index, BoxState::Unchecked);
        }
        LireProfilUtilisateur(app_);
        app_.machine.messageLoop->RunPending();
        if (!isTransfer) return;
        sets_.RemplirArray(transferList, 0);
        for (std::int32_t index = 0; index < SetCount; ++index) {
            EnableBox(index, false);
            SetBoxQuietly(index, BoxState::Checked);
        }
        events_.OnRefreshSpace();
    });
}

void SelectionList::SetArrayFichier(std::shared_ptr<clsColFileInfo> collection) {
    content_.collection = std::move(collection);
    ListeFichiersRemplir();
}

void SelectionList::ListeFichiersRemplir() {
    Change(L"ListeFichiersRemplir, module frmBackupCD", [&] {
        content_.rows.Clear();
        for (std::int32_t position = 1; position <= content_.collection->Count(); ++position)
            AjouterFichRep(content_.collection->Item(position)->strNom, 0, false);
    });
}

std::int32_t SelectionList::ItemsAdded(std::int32_t setIndex) const {
    return content_.arrNbItemsAjoutes.at(static_cast<std::size_t>(setIndex));
}

std::int32_t SelectionList::ItemsLeft(std::int32_t setIndex) const {
    return content_.arrNbItemsRestants.at(static_cast<std::size_t>(setIndex));
}

void SelectionList::AjouterFichRep(const std::wstring& sChemin, std::int32_t lngCouleur, bool blnAjouterCollection) {
    Change(L"AjouterFichRep, module frmBackupCD", [&] {
        clsFileInfo probe{sChemin, KindFile, {}};
        bool hasLastRow = true;
        const std::int32_t selectedBefore = content_.rows.Selected();
        const std::int32_t shownBefore = content_.shownRow;
        const bool isPattern = IsFolderPattern(sChemin);
        if (!isPattern) {
            probe.strNom = Without(sChemin, AllFiles);
            const bool isFolder = app_.machine.files->IsDirectory(probe.strNom);
            if (isFolder) probe = {WithoutTrailingBackslash(probe.strNom), KindFolder, {}};
        }
        if (!leftOut_.MayAdd(probe.strNom)) return;
        if (isPattern) {
            hasLastRow = AddPatternRows(sChemin, lngCouleur) > 0;
        } else {
            AddRow(probe.strNom, probe.lngType == KindFolder, lngCouleur);
        }
        if (content_.collection->ContainsItem(probe)) {
            if (hasLastRow) content_.rows.Remove(RowCount() - 1);
            content_.rows.Select(selectedBefore);
            content_.shownRow = shownBefore;
            return;
        }
        if (blnAjouterCollection) {
            const auto item = content_.collection->Add(probe.strNom, probe.lngType);
            if (!isPattern) content_.rows.Last().ShareText(item);
        }
        events_.OnAddFile(probe.strNom);
        work_.Continue();
    });
}

std::size_t SelectionList::AddPatternRows(const std::wstring& pattern, std::int32_t color) {
    const std::vector<std::wstring> names = app_.machine.files->Find(pattern);
    for (const std::wstring& name : names) AddRow(FolderPart(pattern) + name, true, color);
    return names.size();
}

void SelectionList::AddRow(const std::wstring& path, bool isFolder, std::int32_t color) {
    content_.rows.Add({std::make_shared<std::wstring>(path), isFolder, isFolder, NoSet, color});
    SelectAndShow(RowCount() - 1);
}

void SelectionList::SelectAndShow(std::int32_t row) {
    content_.rows.Select(row);
    content_.shownRow = row;
}

void SelectionList::AddFiles(const std::wstring& folder, const std::vector<std::wstring>& names) {
    Change(L"AjouterFichier, module frmBackupCD", [&] {
        app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
        for (const std::wstring& name : names) AjouterFichRep(InFolder(folder, name), 0, true);
        app_.machine.messageLoop->SetPointer(Pointer::Default);
    });
}

std::wstring SelectionList::AddFolder(const std::wstring& path) {
    std::wstring parent;
    Change(L"cmdAjouterRep_Click, module frmBackupCD", [&] {
        if (path.empty()) return;
        if (IsDiskRoot(path)) {
            app_.ShowMessage(TextId::RootRefused, TextId::RootRefusedTitle, box::Exclamation);
            return;
        }
        AjouterFichRep(path, 0, true);
        if (leftOut_.IsEmpty()) parent = FolderPart(path);
    });
    return parent;
}

void SelectionList::AddDropped(const std::vector<std::wstring>& paths) {
    Change(L"lvFichRep_OLEDragDrop, module frmBackupCD", [&] {
        for (const std::wstring& path : paths) {
            if (IsDiskRoot(path)) {
                ShowChanges();
                // The button refuses a root with the exclamation icon; the two differ on purpose.
                app_.ShowMessage(TextId::RootRefused, TextId::RootRefusedTitle, box::Information);
                return;
            }
            AjouterFichRep(path, 0, true);
        }
    });
}

void SelectionList::DetruireItem(std::int32_t iIndex) {
    Change(L"DetruireItem, module frmBackupCD", [&] {
        const SelectionRow row = Row(iIndex);
        RemoveRecordOf(row);
        if (row.setIndex != NoSet) {
            std::int32_t& left = content_.arrNbItemsRestants[static_cast<std::size_t>(row.setIndex)];
            --left;
            SetBoxQuietly(row.setIndex, left <= 0 ? BoxState::Unchecked : BoxState::Grey);
        }
        content_.rows.Remove(iIndex);
    });
}

/// A set's folder row carries the bare path, the user's own has "\*.*" after it: either finds its record.
void SelectionList::RemoveRecordOf(const SelectionRow& row) {
    const auto record = content_.collection->Find(*row.path, row.isFolder ? KindFolder : KindFile);
    if (record == nullptr || record->strNom != *row.path) return;
    events_.OnRemoveFile(record->strNom);
    content_.collection->Remove(record->strNom);
}

void SelectionList::EffacerFichierListe(std::int32_t selected) {
    Change(L"EffacerFichierListe, module frmBackupCD", [&] {
        if (RowCount() == 0 || selected < 0) return;
        DetruireItem(selected);
        SelectAndShow(std::min(selected, RowCount() - 1));
    });
}

void SelectionList::EffacerTouteListe() {
    Change(L"EffacerTouteListe, module frmBackupCD", [&] {
        content_.rows.Clear();
        // The boxes run their clicks here, on a list that is empty already: only the collection still holds the items.
        for (std::int32_t index = 0; index < SetCount; ++index) SetBoxState(index, BoxState::Unchecked);
        content_.collection->RemoveAll();
        events_.OnRemoveAllFile();
    });
}

void SelectionList::ClickBox(std::int32_t index) {
    SetBoxState(index, Box(index).state == BoxState::Unchecked ? BoxState::Checked : BoxState::Unchecked);
}

/// Gives a box a state; a box that changes runs its click.
void SelectionList::SetBoxState(std::int32_t index, BoxState state) {
    SetBox& setBox = boxes_.at(static_cast<std::size_t>(index));
    if (setBox.state == state) return;
    setBox.state = state;
    view_.BoxChanged(index);
    chkSauvOKR_Click(index);
}

/// Gives a box a state that adds or removes nothing.
void SelectionList::SetBoxQuietly(std::int32_t index, BoxState state) {
    blnTraiterClicSet_ = false;
    SetBoxState(index, state);
    blnTraiterClicSet_ = true;
}

void SelectionList::EnableBox(std::int32_t index, bool isEnabled) {
    boxes_.at(static_cast<std::size_t>(index)).isEnabled = isEnabled;
    view_.BoxChanged(index);
}

void SelectionList::chkSauvOKR_Click(std::int32_t index) {
    if (!blnTraiterClicSet_) return;
    Change(L"chkSauvOKR_Click, module frmBackupCD", [&] {
        const auto set = static_cast<std::size_t>(index);
        const Files& files = *app_.machine.files;
        if (sets_.IsInstalled(index)) {
            const bool isUnchecked = Box(index).state == BoxState::Unchecked;
            if (!isUnchecked) content_.arrNbItemsAjoutes[set] = 0;
            for (const std::wstring& listFile : sets_.ListFiles(index)) {
                if (!files.FileExists(listFile)) continue;
                if (isUnchecked) {
                    sets_.ViderArray(listFile);
                } else {
                    sets_.RemplirArray(listFile, index);
                }
            }
            if (isUnchecked) content_.arrNbItemsAjoutes[set] = content_.arrNbItemsRestants[set] = 0;
        }
        events_.OnRefreshSpace();
    });
}

Currency SelectionList::SpaceOf(const std::wstring& path) {
    return ItemSpace(app_, path, app_.machine.files->IsDirectory(path), [this] { work_.Continue(); });
}
