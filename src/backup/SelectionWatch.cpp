#include "backup/SelectionWatch.h"

#include "backup/SpaceFigures.h"
#include "core/SpaceValues.h"
#include "platform/MessageBoxes.h"
#include "resources/TextId.h"
#include "shell/ErrorReport.h"

#include <utility>

SelectionWatch::SelectionWatch(Application& app, BackupView& view, Measure measure)
    : app_(app), view_(view), measure_(std::move(measure)) {}

void SelectionWatch::OnAddFile(const std::wstring& path) {
    Guarded(app_, L"ctlSelectionFichiers_OnAddFile, module frmBackupCD", [&] {
        app_.space->requiredSpace += measure_(path);
        areFiguresDue_ = true;
        const Spaces spaces = SpacesOf(app_);
        // Among many items that fit the figures wait for the last one; a message comes over figures that are right.
        if (!spaces.IsMediumFull() && !spaces.IsWorkSpaceFull()) return;
        OnShowChanges();
        if (spaces.IsMediumFull()) {
            app_.ShowMessage(TextId::MediumTooSmall, TextId::CapacityReachedTitle, box::Exclamation);
        } else {
            CheckWorkSpace();
        }
    });
}

void SelectionWatch::OnRemoveFile(const std::wstring& path) {
    Guarded(app_, L"ctlSelectionFichiers_OnRemoveFile, module frmBackupCD", [&] {
        // Measured again: a folder that has changed since it was added leaves the difference behind.
        app_.space->requiredSpace -= measure_(path);
        ShowRemoval();
    });
}

void SelectionWatch::OnRemoveAllFile() {
    Guarded(app_, L"ctlSelectionFichiers_OnRemoveAllFile, module frmBackupCD", [this] {
        app_.space->requiredSpace = {};
        ShowRemoval();
    });
}

void SelectionWatch::OnRefreshSpace() {
    Guarded(app_, L"ctlSelectionFichiers_OnRefreshSpace, module frmBackupCD", [this] {
        view_.AfficherEspaces();
        view_.MajBoutonLancer();
    });
}

void SelectionWatch::OnShowChanges() {
    Guarded(app_, L"ctlSelectionFichiers_OnAddFile, module frmBackupCD", [this] {
        if (!std::exchange(areFiguresDue_, false)) return;
        view_.AfficherEspaces();
        view_.MajBoutonLancer();
    });
}

void SelectionWatch::ShowRemoval() {
    view_.AfficherEspaceRequis();
    view_.MarkWorkSpace(CheckWorkSpace());
    view_.MajBoutonLancer();
}

bool SelectionWatch::CheckWorkSpace() {
    if (!SpacesOf(app_).IsWorkSpaceFull()) return false;
    app_.ShowMessage(TextId::BackupWorkSpaceTooSmall, TextId::CapacityReachedTitle, box::Exclamation);
    return true;
}
