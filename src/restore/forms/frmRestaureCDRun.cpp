// The restore itself: from the click to the last row.
#include "platform/MessageLoop.h"
#include "restore/forms/frmRestaureCD.h"

#include "archive/WorkFolder.h"
#include "archive/clsListe.h"
#include "archive/forms/frmMotPasse.h"
#include "archive/modGestionRestaure.h"
#include "core/StartUpValues.h"
#include "platform/MessageBoxes.h"
#include "platform/Power.h"
#include "resources/TextId.h"
#include "ui/SessionEndHold.h"

#include <utility>

void frmRestaureCD::cmdLancerRestauration_Click() {
    try {
        Guarded(L"cmdLancerRestauration_Click, module frmRestaureCD", [this] {
            const InsertedMedium::Print medium = shownMedium_;
            chosenRoot_ = medium.root;
            if (!IsStillThere(medium)) return;
            if (static_cast<double>(medium.archiveSizeBytes) >= app_.startUp->dblEspaceDisponible) {
                app_.ShowMessage(TextId::RestoreWorkSpaceTooSmall, TextId::CapacityReachedTitle, box::Critical);
                return;
            }
            const std::unique_ptr<Hold> awake = app_.machine.power->KeepAwake();
            if (OpenArchive(medium)) Restore();
        });
    } catch (...) {
        // Not even the report could be made. A window that stays busy could not be closed.
        GiveWindowBack();
        throw;
    }
    GiveWindowBack();
}

void frmRestaureCD::GiveWindowBack() {
    if (!IsLoaded() || !std::exchange(isRestoring_, false)) return;
    // A restore that failed as a whole gives the window back, and the lists follow the devices again.
    hook_.Install(Handle(), modFonctionsCommunes::MyWindowProcRestaureCD);
    BloquerBoutons(true);
    EnableLaunch();
}

/// Whether the medium is still the one in its drive. When it is not, the lists show what is: that is for the user to
/// look at before anything is restored from it.
bool frmRestaureCD::IsStillThere(const InsertedMedium::Print& medium) {
    return medium.content == InsertedMedium::Content::Backup && BringListsUpToDate() && IsLoaded() &&
           shownMedium_ == medium;
}

/// Asks for the password until the outer archive opens with it. False when the user gives up, and when the medium went
/// or another one came while a dialog or a message let the devices be followed.
bool frmRestaureCD::OpenArchive(const InsertedMedium::Print& medium) {
    const auto unZip = [&] {
        const ui::SessionEndHold hold(*this, Text(TextId::RestoreRuns));
        return modGestionRestaure::UnZipOkrBackup(app_, medium.root, ArchiveName);
    };
    while (IsLoaded()) {
        if (!modGestionMotPasse::DemanderMotPasse(app_, this, PasswordMode::Entry)) return false;
        if (!IsLoaded() || !IsStillThere(medium)) return false;
        if (unZip() != modGestionRestaure::WrongPassword) return true;
        ResetWorkFolder(app_);
        app_.ShowMessage(TextId::WrongPassword, TextId::PasswordRefusedTitle, box::Exclamation);
    }
    return false;
}

void frmRestaureCD::Restore() {
    isRestoring_ = true;
    {
        // Before any message runs: Windows may have asked while the archive was opened.
        const ui::SessionEndHold hold(*this, Text(TextId::RestoreRuns));
        hook_.Remove();
        refresh_.Cancel();
        BloquerBoutons(false);
        for (int row = 0; row < rows_.Count(); ++row)
            if (rows_.At(row).isTicked && rows_.At(row).record.couldBeWritten) CopierFichRepert(row);
    }
    if (rows_.IsAnyTickedUnfit()) ReportUnfitRows();
    app_.ShowMessage(TextId::RestoreDone, TextId::RestoreDoneTitle, box::Exclamation);
    Unload();
    parent_.SetFullExit(true);
}

/// Once for all rows that no backup writes.
void frmRestaureCD::ReportUnfitRows() {
    Guarded(L"CopierFichRepert, module frmRestaureCD", [] { throw RuntimeError(ErrorNumber::BadFileName); });
}

void frmRestaureCD::CopierFichRepert(int index) {
    Guarded(L"CopierFichRepert, module frmRestaureCD", [&] {
        lvFichiersRepertoires.Select(index);
        const ControlFileRecord& record = rows_.At(index).record;
        modGestionRestaure::UnZipIntermediaire(app_, ExtractionPath(record.restorePath), record.innerArchive);
        rows_.MarkRestored(index);
        lvFichiersRepertoires.RedrawRow(index);
        app_.machine.messageLoop->RunPending();
    });
}

void frmRestaureCD::BloquerBoutons(bool bEnable) {
    Guarded(L"BloquerBoutons, module frmRestaureCD", [&] {
        for (const int controlId : {IDC_cmdLancerRestauration, IDC_cmdFermer, IDC_cmdToutDeselectionner,
                                    IDC_cmdToutSelectionner, IDC_lvFichiersRepertoires, IDC_lstDrive})
            ui::Control(*this, controlId).Enable(bEnable);
        app_.machine.messageLoop->RunPending();
    });
}
